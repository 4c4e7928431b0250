#include "export/managed_clone_export.h"

#include "export/assembly_components.h"
#include "export/exported_files.h"
#include "export/host_numbers.h"
#include "export/part_queries.h"
#include "logging/log.h"
#include "nx/clone_records.h"
#include "nx/session.h"
#include "nx/text.h"
#include "platform/error_text.h"
#include "platform/files.h"
#include "platform/text_encoding.h"

#include <NXOpen/BasePart.hxx>

#include <algorithm>
#include <chrono>
#include <map>
#include <stdexcept>

namespace pivra {

namespace fs = std::filesystem;

namespace {

using logging::LogDebug;
using logging::LogInfo;
using logging::LogWarning;
using logging::plain;
using logging::quoted;

constexpr auto exportOperation = static_cast<UF_CLONE_operation_class_t>(host_numbers::cloneOperation);
constexpr auto defaultAction = static_cast<UF_CLONE_action_t>(host_numbers::cloneAction);
constexpr auto familyTreatment = static_cast<UF_CLONE_family_treatment_t>(host_numbers::familyTreatment);
constexpr auto namingByRule = static_cast<UF_CLONE_naming_technique_t>(host_numbers::cloneNaming);
constexpr int detailedNamingFailures = 5;

/// The part under export, as the log names it.
struct ExportContext {
    std::string label;
    std::string mode;
    std::string directory;
};

/// A clone session of the host. It is always terminated, whatever the call that starts it returned.
class CloneSession {
 public:
    CloneSession() { nx::checkNxStatus("UF_CLONE_initialise", UF_CLONE_initialise(exportOperation)); }
    ~CloneSession() { nx::checkNxStatus("UF_CLONE_terminate", UF_CLONE_terminate()); }
    CloneSession(const CloneSession&) = delete;
    CloneSession& operator=(const CloneSession&) = delete;

    /// `directory` is in the host's code page.
    void setUp(const std::string& directory);
    void add(const char* encodedName, bool isAssembly);
    void perform();

 private:
    void emptyFailures() {
        nx::checkNxStatus("UF_CLONE_init_naming_failures", UF_CLONE_init_naming_failures(failures_.emptied()));
    }
    void setNameRule();
    static bool addUnder(const char* name, bool isAssembly);
    void report(const char* operation, int status) {
        nx::checkNxStatus(operation, status);
        reportNamingFailures(operation, *failures_.get());
    }

    nx::NamingFailures failures_;
};

void CloneSession::setUp(const std::string& directory) {
    emptyFailures();
    nx::checkNxStatus("UF_CLONE_set_def_action", UF_CLONE_set_def_action(defaultAction));
    nx::checkNxStatus("UF_CLONE_set_def_directory", UF_CLONE_set_def_directory(directory.c_str()));
    nx::checkNxStatus("UF_CLONE_set_assoc_file_root_dir", UF_CLONE_set_assoc_file_root_dir(directory.c_str()));
    nx::checkNxStatus("UF_CLONE_set_family_treatment", UF_CLONE_set_family_treatment(familyTreatment));
    nx::checkNxStatus("UF_CLONE_set_def_naming", UF_CLONE_set_def_naming(namingByRule));
    setNameRule();
    emptyFailures();
    const logical isDryRun{};
    nx::checkNxStatus("UF_CLONE_set_dryrun", UF_CLONE_set_dryrun(isDryRun));
}

/// Files are named by the part's number in the database.
void CloneSession::setNameRule() {
    char numberOfPart[] = "${DB_PART_NO}";
    char nothing[] = "";
    UF_CLONE_name_rule_def_t rule{};
    rule.base_string = numberOfPart;
    rule.new_string = nothing;
    report("UF_CLONE_set_name_rule", UF_CLONE_set_name_rule(&rule, failures_.get()));
}

/// Some releases take the command-line name alone.
void CloneSession::add(const char* encodedName, bool isAssembly) {
    if (addUnder(encodedName, isAssembly)) return;
    const std::string commandLineName = commandLineNameOf(encodedName);
    if (!commandLineName.empty()) addUnder(commandLineName.c_str(), isAssembly);
}

bool CloneSession::addUnder(const char* name, bool isAssembly) {
    LogDebug(
        isAssembly ? "Adding managed NX assembly to UF_CLONE export:" : "Adding managed NX part to UF_CLONE export:",
        quoted("encoded_name", nx::utf8FromLocale(name)));
    if (!isAssembly) return nx::checkNxStatus("UF_CLONE_add_part", UF_CLONE_add_part(name));
    nx::LoadStatus loaded;
    return nx::checkNxStatus("UF_CLONE_add_assembly", UF_CLONE_add_assembly(name, loaded.get()));
}

void CloneSession::perform() {
    report("UF_CLONE_apply_defaults", UF_CLONE_apply_defaults(failures_.get()));
    emptyFailures();
    report("UF_CLONE_perform_clone", UF_CLONE_perform_clone(failures_.get()));
}

/// The folder in the host's code page, as its C interface takes it; by its short name where the code page lacks a
/// letter.
std::string hostDirectory(const fs::path& directory) {
    if (auto text = nx::exactLocaleText(platform::utf8FromPath(directory))) return *text;
    if (auto text = nx::exactLocaleText(platform::utf8FromPath(platform::shortPath(directory)))) return *text;
    throw std::runtime_error(
        "NX cannot be given the folder for temporary files, because its name has letters that the system's code page "
        "lacks. Set the environment variables TEMP and TMP to a folder with plain letters, such as C:/Temp, and "
        "restart NX.");
}

/// Runs the clone within the open bracket of the C interface and returns the part's number.
std::string runClone(NXOpen::BasePart& part, const std::string& directory) {
    char encoded[MAX_FSPEC_BUFSIZE] = "";
    nx::checkNxStatus("UF_PART_ask_part_name", UF_PART_ask_part_name(part.Tag(), encoded));
    ManagedPartName name;
    nx::checkNxStatus("UF_UGMGR_decode_part_file_name", decodeEncodedName(encoded, name));
    LogDebug("Decoded managed NX part name for export:", quoted("part_number", name.partNumber),
             quoted("revision", name.partRevision), quoted("file_type", name.partFileType),
             quoted("file_name", name.partFileName));
    CloneSession clone;
    clone.setUp(directory);
    clone.add(encoded, rootComponent(&part) != nullptr);
    clone.perform();
    return name.partNumber;
}

/// The files of a folder at one time, to tell later which were written since.
class DirectorySnapshot {
 public:
    explicit DirectorySnapshot(const fs::path& directory) {
        for (const auto& file : listExportedFiles(directory)) setBack(file);
        for (const auto& file : listExportedFiles(directory)) files_.emplace(file.path, file);
    }

    bool isNewOrChanged(const ExportedFile& file) const {
        const auto found = files_.find(file.path);
        return found == files_.end() || found->second.facts.size != file.facts.size ||
               found->second.facts.written != file.facts.written;
    }

 private:
    /// Moves the write time two seconds back, so that writing the file again changes it even with a coarse file clock.
    static void setBack(const ExportedFile& file) {
        try {
            platform::setLastWriteTime(file.path, file.facts.written - std::chrono::seconds(2));
        } catch (const fs::filesystem_error&) {
            // The file clock then has to be fine enough.
        }
    }

    std::map<fs::path, ExportedFile> files_;
};

/// The part's own file among those written since `before`; empty when none was written.
std::string rootFile(const ExportContext& context, const fs::path& directory, const DirectorySnapshot& before,
                     const std::string& partNumber) {
    std::vector<ExportedFile> files = listExportedFiles(directory);
    files.erase(
        std::remove_if(files.begin(), files.end(), [&](const auto& file) { return !before.isNewOrChanged(file); }),
        files.end());
    if (files.empty()) {
        LogWarning("Managed NX export did not produce a supported upload file:", quoted("part", context.label),
                   plain("mode", context.mode), quoted("directory", context.directory));
        return {};
    }
    const FilesByPartNumber byNumber(files);
    if (const ExportedFile* named = byNumber.find(partNumber)) return platform::utf8FromPath(named->path);
    const auto newest = std::max_element(files.begin(), files.end(), [](const auto& left, const auto& right) {
        return left.facts.written < right.facts.written;
    });
    std::string path = platform::utf8FromPath(newest->path);
    LogDebug("Managed NX export did not find a file matching the part number; using newest exported file:",
             quoted("part", context.label), quoted("part_number", partNumber), quoted("directory", context.directory),
             quoted("exported_file", path));
    return path;
}

bool ensureExists(const ExportContext& context, const fs::path& directory) {
    const std::error_code error = platform::createDirectories(directory);
    if (!error) return true;
    LogWarning("Managed NX export failed because the export directory could not be created:",
               quoted("part", context.label), plain("mode", context.mode), quoted("directory", context.directory),
               quoted("error", platform::errorText(error)));
    return false;
}

}  // namespace

std::string exportManagedPart(NXOpen::BasePart* part, const ExportRun& run) {
    const std::string mode = run.form() == IdentifierForm::upload ? "upload" : "display";
    if (part == nullptr) {
        LogWarning("Managed NX export skipped because there is no displayed part: mode=" + mode + ".");
        return {};
    }
    const fs::path directory = run.directory();
    const ExportContext context{nx::partLogLabel(part), mode, platform::utf8FromPath(directory)};
    if (!ensureExists(context, directory)) return {};
    const std::string directoryForHost = hostDirectory(directory);
    const DirectorySnapshot before(directory);
    std::string partNumber;
    {
        const nx::UfSession session;
        if (!session) {
            LogWarning("Managed NX export failed because UF_initialize returned status " +
                           std::to_string(session.status()) + ":",
                       quoted("part", context.label), plain("mode", mode));
            return {};
        }
        LogInfo("Starting managed NX export:", quoted("part", context.label), plain("mode", mode),
                quoted("traceable_id", run.sessionKey()), quoted("directory", context.directory));
        partNumber = runClone(*part, directoryForHost);
    }
    std::string file = rootFile(context, directory, before, partNumber);
    if (file.empty()) return {};
    LogInfo("Managed NX export complete:", quoted("part", context.label), plain("mode", mode),
            quoted("exported_file", file), quoted("decoded_part_number", partNumber));
    return file;
}

void reportNamingFailures(const std::string& operation, const UF_CLONE_naming_failures_t& failures) {
    if (failures.n_failures <= 0) return;
    LogWarning(operation + " reported " + std::to_string(failures.n_failures) + " naming failure(s).");
    const int detailed = std::min(failures.n_failures, detailedNamingFailures);
    for (int index = 0; index < detailed; ++index) {
        const auto nameIn = [&](char** names) { return nx::utf8FromLocale(names != nullptr ? names[index] : nullptr); };
        LogDebug(operation + " naming failure[" + std::to_string(index) + "]:",
                 quoted("input", nameIn(failures.input_names)), quoted("output", nameIn(failures.output_names)),
                 logging::number("status", failures.statuses != nullptr ? failures.statuses[index] : 0));
    }
    if (failures.n_failures > detailed) {
        LogDebug(operation + " suppressed " + std::to_string(failures.n_failures - detailed) +
                 " additional naming failure detail(s).");
    }
}

}  // namespace pivra
