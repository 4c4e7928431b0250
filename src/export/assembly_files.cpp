#include "export/assembly_files.h"

#include "export/component_walk.h"
#include "export/displayed_model_export.h"
#include "export/exported_files.h"
#include "export/file_names.h"
#include "export/part_queries.h"
#include "logging/log.h"
#include "logging/log_line.h"
#include "nx/text.h"
#include "platform/error_text.h"
#include "platform/text_encoding.h"
#include "traceability/part_label.h"

#include <NXOpen/Assemblies_Component.hxx>
#include <NXOpen/Part.hxx>

#include <algorithm>
#include <functional>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace pivra {

namespace {

using logging::LogDebug;
using logging::LogError;
using logging::LogInfo;
using logging::LogLine;
using logging::LogWarning;

/// The heads of the lines of one kind of collection.
struct Wording {
    const char* noFile;
    const char* unresolved;
    const char* repeated;
    const char* skipped;
    const char* metadataError;
    const char* exportError;
    const char* walkError;
    const char* aborted;
    const char* summary;
};

constexpr Wording localWording{
    "Assembly member export produced no local upload file:",
    "Assembly member skipped because upload identifiers could not be resolved:",
    "Assembly member skipped because it was already collected:",
    "Assembly member skipped because export produced no local file:",
    "Assembly member metadata could not be read:",
    "Assembly member export failed:",
    "Local assembly export failed while walking components:",
    "Local assembly export aborted because the root file was not exportable:",
    "Collected local NX upload files:",
};

constexpr Wording managedWording{
    "Managed assembly member omitted because no exported file was resolved:",
    "Managed assembly member skipped because upload identifiers could not be resolved:",
    "Managed assembly member skipped because it was already collected:",
    "Managed assembly member skipped because no local export file was found:",
    "Managed assembly member file collection failed:",
    "Managed assembly member file collection failed:",
    "Managed assembly file collection failed while walking components:",
    "Managed assembly file collection aborted because the root file was not resolved:",
    "Collected managed NX upload files:",
};

/// Where a collection finds the file of a part (UTF-8; empty for none), and how it speaks of it.
struct Source {
    Wording wording;
    std::optional<std::string> sharedDirectory;  // of a managed collection
    std::function<std::string(NXOpen::BasePart& part, const std::string& sourcePath)> fileOf;
};

class Collection {
 public:
    Collection(NXOpen::BasePart& root, Source source, ExportRun& run)
        : root_(root), source_(std::move(source)), run_(run) {}

    CollectedFiles collect();

 private:
    /// What is known of a part that was met before.
    struct Member {
        std::string label;
        std::string key;  // empty when its identifiers could not be resolved
    };

    void addRoot(const std::string& label);
    void walk();
    void addMember(NXOpen::Part& part);
    void noteUnloaded(NXOpen::Assemblies::Component& component);
    void logRepeated(const Member& member) const;
    void addNewMember(NXOpen::Part& part, const Member& member, ModelFileEntry entry);
    bool readIdentity(NXOpen::BasePart& part, const std::string& label, ModelFileEntry& entry) const;
    void findFile(NXOpen::BasePart& part, const std::string& label, ModelFileEntry& entry) const;
    void logSummary(const std::string& label) const;

    LogLine line(const char* head, const std::string& label) const { return LogLine(head).quoted("part", label); }
    /// Ends `line` with the shared directory, which a managed collection names.
    LogLine withDirectory(LogLine line) const {
        return source_.sharedDirectory ? line.quoted("shared_export_directory", *source_.sharedDirectory) : line;
    }
    void logError(const char* head, const std::string& label, const std::string& error) const {
        LogError(withDirectory(line(head, label)).quoted("error", error).text());
    }

    NXOpen::BasePart& root_;
    Source source_;
    ExportRun& run_;
    CollectedFiles collected_;
    std::unordered_set<std::string> seenKeys_;
    std::unordered_map<NXOpen::BasePart*, Member> members_;
    std::unordered_set<std::string> unloaded_;  // files, or names where no file is known
};

const std::string& keyOf(const ModelFileEntry& entry) {
    return entry.sourcePath.empty() ? entry.sourceFileId : entry.sourcePath;
}

CollectedFiles Collection::collect() {
    const std::string label = partLogLabel(&root_);
    addRoot(label);
    if (const auto error = platform::errorOf([this] { walk(); })) logError(source_.wording.walkError, label, *error);
    if (collected_.isAssembly && collected_.entries.empty()) {
        LogError(withDirectory(line(source_.wording.aborted, label)).text());
    } else {
        logSummary(label);
    }
    return std::move(collected_);
}

void Collection::addRoot(const std::string& label) {
    ModelFileEntry entry;
    if (!readIdentity(root_, label, entry)) return;
    findFile(root_, label, entry);
    members_.emplace(&root_, Member{label, keyOf(entry)});
    seenKeys_.insert(keyOf(entry));
    if (!entry.uploadPath.empty()) collected_.entries.push_back(std::move(entry));
}

/// Adds the members, unless the root's own file is missing.
void Collection::walk() {
    auto* rootOfTree = rootComponent(&root_);
    collected_.isAssembly = rootOfTree != nullptr;
    if (rootOfTree == nullptr || collected_.entries.empty()) return;
    walkComponents(root_, *rootOfTree, [this](const Placement& placed) {
        if (placed.part != nullptr) addMember(*placed.part);
        if (!placed.isLoaded) noteUnloaded(*placed.component);
        return true;
    });
}

/// What is not loaded has no identifier, so that it cannot be sent; each is named once. A name that the host fails to
/// give costs the line its name, and not the members that follow.
void Collection::noteUnloaded(NXOpen::Assemblies::Component& component) {
    collected_.hasUnloadedComponents = true;
    std::string name;
    if (platform::errorOf([&] { name = nx::utf8(component.DisplayName()); })) name = "unknown";
    const std::string file = fileOfComponent(component);
    if (!unloaded_.insert(file.empty() ? name : file).second) return;
    LogWarning(LogLine("Assembly member is not loaded and will not be uploaded:")
                   .quoted("component", name)
                   .quoted("backing_source", file)
                   .text());
}

void Collection::addMember(NXOpen::Part& part) {
    const auto known = members_.find(&part);
    if (known != members_.end()) return logRepeated(known->second);
    ModelFileEntry entry;
    Member member{partLogLabel(&part), {}};
    if (readIdentity(part, member.label, entry) && !entry.sourceFileId.empty()) member.key = keyOf(entry);
    members_.emplace(&part, member);
    if (member.key.empty() || !seenKeys_.insert(member.key).second) return logRepeated(member);
    addNewMember(part, member, std::move(entry));
}

void Collection::logRepeated(const Member& member) const {
    if (member.key.empty()) {
        LogWarning(withDirectory(line(source_.wording.unresolved, member.label)).text());
    } else {
        LogDebug(line(source_.wording.repeated, member.label).quoted("key", member.key).text());
    }
}

void Collection::addNewMember(NXOpen::Part& part, const Member& member, ModelFileEntry entry) {
    findFile(part, member.label, entry);
    if (!entry.uploadPath.empty()) {
        collected_.entries.push_back(std::move(entry));
        return;
    }
    LogWarning(
        withDirectory(line(source_.wording.skipped, member.label).quoted("source_file_id", entry.sourceFileId)).text());
}

/// Reads everything but the file. The root's identifier is the run's: resolving it again could repair the part again.
bool Collection::readIdentity(NXOpen::BasePart& part, const std::string& label, ModelFileEntry& entry) const {
    const auto error = platform::errorOf([&] {
        entry.sourcePath = nx::utf8(part.FullPath());
        entry.sourceFileId = &part == &root_ ? run_.sessionKey() : traceableId(&part, run_.form());
        entry.uploadFileName = nx::utf8(part.Leaf());
        // The root goes under the key that the dialogs ask for.
        entry.isPartFamily = &part != &root_ && isPartFamilyMember(&part);
        entry.revision = configuredRevisionId(&part);
    });
    if (error) logError(source_.wording.metadataError, label, *error);
    return !error;
}

void Collection::findFile(NXOpen::BasePart& part, const std::string& label, ModelFileEntry& entry) const {
    const auto error = platform::errorOf([&] { entry.uploadPath = source_.fileOf(part, entry.sourcePath); });
    if (error) return logError(source_.wording.exportError, label, *error);
    if (!entry.uploadPath.empty()) {
        entry.uploadFileName = lastPathComponent(entry.uploadPath);
        return;
    }
    LogLine omitted = line(source_.wording.noFile, label);
    if (!source_.sharedDirectory) omitted.quoted("source", entry.sourcePath);
    LogWarning(withDirectory(omitted).text());
}

void Collection::logSummary(const std::string& label) const {
    LogInfo(withDirectory(line(source_.wording.summary, label)
                              .flag("is_assembly", collected_.isAssembly)
                              .number("files", collected_.entries.size())
                              .number("uploaded_files", uploadedFileCount(collected_.entries)))
                .text());
}

CollectedFiles collect(NXOpen::BasePart* part, Source source, ExportRun& run) {
    if (part == nullptr) {
        LogWarning("Assembly export skipped a null NX part.");
        return {};
    }
    return Collection(*part, std::move(source), run).collect();
}

}  // namespace

CollectedFiles collectLocalUploadFiles(NXOpen::BasePart* part, ExportRun& run) {
    const auto fileOf = [&run](NXOpen::BasePart& member, const std::string& sourcePath) {
        return exportDisplayedModel(&member, sourcePath, run);
    };
    return collect(part, {localWording, std::nullopt, fileOf}, run);
}

CollectedFiles collectManagedUploadFiles(NXOpen::BasePart* part, const std::string& rootFile, ExportRun& run) {
    const auto directory = platform::pathFromUtf8(rootFile).parent_path();
    const FilesByPartNumber files(directory.empty() ? std::vector<ExportedFile>() : listExportedFiles(directory));
    const auto fileOf = [&](NXOpen::BasePart& member, const std::string&) {
        if (&member == part) return rootFile;
        const auto name = decodeManagedPartName(&member);
        const ExportedFile* file = name ? files.find(name->partNumber) : nullptr;
        return file != nullptr ? platform::utf8FromPath(file->path) : std::string();
    };
    return collect(part, {managedWording, platform::utf8FromPath(directory), fileOf}, run);
}

void collectUploadFiles(NXOpen::BasePart* part, ModelMetadata& metadata, ExportRun& run) {
    CollectedFiles collected = metadata.isManaged ? collectManagedUploadFiles(part, metadata.exportedFile, run)
                                                  : collectLocalUploadFiles(part, run);
    metadata.files = std::move(collected.entries);
    metadata.isAssembly = collected.isAssembly;
    metadata.hasUnloadedComponents = collected.hasUnloadedComponents;
}

std::size_t uploadedFileCount(const std::vector<ModelFileEntry>& entries) {
    return static_cast<std::size_t>(
        std::count_if(entries.begin(), entries.end(), [](const auto& entry) { return !entry.uploadPath.empty(); }));
}

}  // namespace pivra
