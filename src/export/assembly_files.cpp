#include "export/assembly_files.h"

#include "export/assembly_components.h"
#include "export/displayed_model_export.h"
#include "export/exported_files.h"
#include "export/part_queries.h"
#include "logging/log.h"
#include "nx/session.h"
#include "nx/text.h"
#include "platform/error_text.h"
#include "platform/text.h"
#include "platform/text_encoding.h"

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
using logging::LogWarning;
using logging::quoted;

/// How the log lines of one kind of collection begin.
struct LogHeads {
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

constexpr LogHeads localHeads{
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

constexpr LogHeads managedHeads{
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

/// How a collection finds the file of a part (UTF-8; empty for none), and how its log lines begin.
struct Source {
    LogHeads heads;
    std::optional<std::string> sharedDirectory;  // of a managed collection
    std::function<std::string(NXOpen::BasePart& part, const std::string& sourcePath)> fileOf;
};

class Collection {
 public:
    Collection(NXOpen::BasePart& root, Source source, ExportRun& run)
        : root_(root), source_(std::move(source)), run_(run) {}

    CollectedFiles collect();

 private:
    /// A part that was already visited.
    struct Member {
        std::string label;
        std::string key;  // empty when its identifiers could not be resolved
    };

    void addRoot(const std::string& label);
    std::optional<std::string> addMembers();
    void addMember(NXOpen::Part& part);
    void noteUnloaded(NXOpen::Assemblies::Component& component);
    void logRepeated(const Member& member) const;
    void addNewMember(NXOpen::Part& part, const Member& member, ModelFileEntry entry);
    bool readIdentity(NXOpen::BasePart& part, const std::string& label, ModelFileEntry& entry) const;
    void findFile(NXOpen::BasePart& part, const std::string& label, ModelFileEntry& entry) const;
    void logSummary(const std::string& label) const;

    /// Only in the lines of a managed collection.
    logging::Field directory() const {
        return logging::quotedIfAny("shared_export_directory", source_.sharedDirectory);
    }
    void logError(const char* head, const std::string& label, const std::string& error) const {
        LogError(head, quoted("part", label), directory(), quoted("error", error));
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
    const std::string label = run_.names().logLabel(&root_);
    addRoot(label);
    std::optional<std::string> readingError;
    const auto error = platform::errorOf([&] { readingError = addMembers(); });
    if (error || readingError) logError(source_.heads.walkError, label, error ? *error : *readingError);
    if (collected_.isAssembly && collected_.entries.empty()) {
        LogError(source_.heads.aborted, quoted("part", label), directory());
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

/// Adds the members, unless the root has no file. Returns the error that ended the reading of the tree, if any.
std::optional<std::string> Collection::addMembers() {
    const auto& components = run_.components(&root_);
    collected_.isAssembly = components.isAssembly;
    if (components.isAssembly && collected_.entries.empty()) return std::nullopt;
    for (const Placement& placed : components.placements) {
        if (placed.part != nullptr) addMember(*placed.part);
        if (!placed.isLoaded) noteUnloaded(*placed.component);
    }
    return components.error;
}

/// A component that is not loaded has no identifier and cannot be sent. The log names each file once; if the host does
/// not give a name, the line says so and the collection goes on.
void Collection::noteUnloaded(NXOpen::Assemblies::Component& component) {
    collected_.hasUnloadedComponents = true;
    std::string name;
    if (platform::errorOf([&] { name = nx::utf8(component.DisplayName()); })) name = "unknown";
    const std::string file = run_.fileOf(component);
    if (!unloaded_.insert(file.empty() ? name : file).second) return;
    LogWarning("Assembly member is not loaded and will not be uploaded:", quoted("component", name),
               quoted("backing_source", file));
}

void Collection::addMember(NXOpen::Part& part) {
    const auto known = members_.find(&part);
    if (known != members_.end()) return logRepeated(known->second);
    ModelFileEntry entry;
    Member member{run_.names().logLabel(&part), {}};
    if (readIdentity(part, member.label, entry) && !entry.sourceFileId.empty()) member.key = keyOf(entry);
    members_.emplace(&part, member);
    if (member.key.empty() || !seenKeys_.insert(member.key).second) return logRepeated(member);
    addNewMember(part, member, std::move(entry));
}

void Collection::logRepeated(const Member& member) const {
    if (member.key.empty()) {
        LogWarning(source_.heads.unresolved, quoted("part", member.label), directory());
    } else {
        LogDebug(source_.heads.repeated, quoted("part", member.label), quoted("key", member.key));
    }
}

void Collection::addNewMember(NXOpen::Part& part, const Member& member, ModelFileEntry entry) {
    findFile(part, member.label, entry);
    if (!entry.uploadPath.empty()) {
        collected_.entries.push_back(std::move(entry));
        return;
    }
    LogWarning(source_.heads.skipped, quoted("part", member.label), quoted("source_file_id", entry.sourceFileId),
               directory());
}

/// Reads everything but the file. The root's identifier comes from the run: resolving it again could repair it again.
bool Collection::readIdentity(NXOpen::BasePart& part, const std::string& label, ModelFileEntry& entry) const {
    const auto error = platform::errorOf([&] {
        entry.sourcePath = run_.names().fullPath(part);
        entry.sourceFileId = &part == &root_ ? run_.sessionKey() : traceableId(&part, run_.form(), run_.names());
        entry.uploadFileName = run_.names().leaf(part);
        // The root is sent under the key that the dialogs look up.
        entry.isPartFamily = &part != &root_ && isPartFamilyMember(&part);
        entry.revision = configuredRevisionId(run_.managedName(&part));
    });
    if (error) logError(source_.heads.metadataError, label, *error);
    return !error;
}

void Collection::findFile(NXOpen::BasePart& part, const std::string& label, ModelFileEntry& entry) const {
    const auto error = platform::errorOf([&] { entry.uploadPath = source_.fileOf(part, entry.sourcePath); });
    if (error) return logError(source_.heads.exportError, label, *error);
    if (!entry.uploadPath.empty()) {
        entry.uploadFileName = platform::lastPathComponent(entry.uploadPath);
        return;
    }
    LogWarning(source_.heads.noFile, quoted("part", label),
               source_.sharedDirectory ? directory() : quoted("source", entry.sourcePath));
}

void Collection::logSummary(const std::string& label) const {
    LogInfo(source_.heads.summary, quoted("part", label), logging::flag("is_assembly", collected_.isAssembly),
            logging::number("files", collected_.entries.size()),
            logging::number("uploaded_files", uploadedFileCount(collected_.entries)), directory());
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
    return collect(part, {localHeads, std::nullopt, fileOf}, run);
}

CollectedFiles collectManagedUploadFiles(NXOpen::BasePart* part, const std::string& rootFile, ExportRun& run) {
    const auto directory = platform::pathFromUtf8(rootFile).parent_path();
    const FilesByPartNumber files(directory.empty() ? std::vector<ExportedFile>() : listExportedFiles(directory));
    const auto fileOf = [&](NXOpen::BasePart& member, const std::string&) {
        if (&member == part) return rootFile;
        const auto name = run.managedName(&member);
        const ExportedFile* file = name ? files.find(name->partNumber) : nullptr;
        return file != nullptr ? platform::utf8FromPath(file->path) : std::string();
    };
    return collect(part, {managedHeads, platform::utf8FromPath(directory), fileOf}, run);
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
