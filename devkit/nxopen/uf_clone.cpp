#include <uf_clone.h>

#include <devkit/session.h>

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <set>

#include "c_memory.h"
#include "calls.h"
#include "host_text.h"
#include "managed_name.h"

namespace devkit {

struct CloneSession {
    UF_CLONE_action_t action = UF_CLONE_default_action;
    UF_CLONE_naming_technique_t naming = UF_CLONE_default_naming;
    std::filesystem::path directory;
    std::string nameRule;
    std::vector<PartData*> parts;  ///< the root first
};

}  // namespace devkit

namespace {

using devkit::PartData;

const std::string numberVariable = "${DB_PART_NO}";

devkit::CloneSession& cloneSession() {
    return *devkit::Session::instance().cloneSession;
}

const devkit::CloneBehaviour& behaviour() {
    return devkit::Session::instance().clone;
}

int enterSession(const char* name) {
    if (const int status = devkit::enterUf(name)) return status;
    return devkit::Session::instance().cloneSession ? 0 : UF_CLONE_err_not_active;
}

/// Adds the part with that encoded name.
int add(const std::string& encodedName) {
    const bool isRefused = behaviour().commandLineNames && !devkit::isCommandLineName(encodedName);
    const auto item = isRefused ? std::nullopt : devkit::decodeManagedName(encodedName);
    PartData* part = item ? devkit::Session::instance().findManaged(item->number) : nullptr;
    if (part == nullptr) return UF_CLONE_err_part_not_found;
    cloneSession().parts.push_back(part);
    return 0;
}

/// Adds the members of the part that was added last, at any depth, and returns the names of those that are not managed.
std::vector<std::string> addMembers() {
    auto& parts = cloneSession().parts;
    std::vector<std::string> missing;
    std::set<std::string> seen{parts.back()->name};
    for (std::size_t next = parts.size() - 1; next < parts.size(); ++next) {
        for (const auto& component : parts[next]->components) {
            if (component.part.empty() || !seen.insert(component.part).second) continue;
            PartData* part = devkit::Session::instance().findPart(component.part);
            if (part != nullptr && part->managed)
                parts.push_back(part);
            else
                missing.push_back(component.part);
        }
    }
    return missing;
}

std::string fileName(const PartData& part) {
    const bool isRoot = &part == cloneSession().parts.front();
    if (isRoot && !behaviour().rootName.empty()) return behaviour().rootName;
    std::string name = cloneSession().nameRule;
    const std::size_t variable = name.find(numberVariable);
    if (variable != std::string::npos) name.replace(variable, numberVariable.size(), part.managed->number);
    return name.empty() ? name : name + ".prt";
}

/// Reports the failures that the session is told to have, and those of parts that get no name.
int reportFailures(UF_CLONE_naming_failures_p_t failures) {
    std::vector<std::string> inputs;
    std::vector<std::string> outputs;
    for (const PartData* part : cloneSession().parts) {
        if (!fileName(*part).empty()) continue;
        inputs.push_back(devkit::encodeManagedName(*part->managed));
        outputs.emplace_back();
    }
    for (int i = 0; i < behaviour().namingFailures; ++i) {
        inputs.push_back("@DB/input" + std::to_string(i) + "/A");
        outputs.push_back(i % 2 == 0 ? "output" + std::to_string(i) : "");
    }
    if (inputs.empty()) return 0;
    failures->n_failures = static_cast<int>(inputs.size());
    failures->statuses = devkit::newStatuses(inputs.size(), UF_CLONE_err_naming_failures);
    failures->input_names = devkit::newStrings(inputs);
    failures->output_names = devkit::newStrings(outputs);
    return UF_CLONE_err_naming_failures;
}

int write(const PartData& part, std::vector<std::string>& written) {
    const std::string name = fileName(part);
    const std::filesystem::path file = cloneSession().directory / devkit::pathOf(name);
    std::error_code ignored;
    if (cloneSession().action != UF_CLONE_overwrite && std::filesystem::exists(file, ignored)) return 0;
    if (!devkit::writeWholeFile(file, part.content)) return UF_CLONE_err_write_failed;
    written.push_back(name);
    return 0;
}

/// Writes a file for each part that has a name.
int perform() {
    const auto& parts = cloneSession().parts;
    if (parts.empty()) return UF_CLONE_err_nothing_added;
    if (cloneSession().directory.empty()) return UF_CLONE_err_invalid_setting;
    int status = 0;
    std::vector<std::string> written;
    for (const PartData* part : parts) {
        if (behaviour().writesNothing || fileName(*part).empty()) continue;
        if (const int failure = write(*part, written)) status = failure;
    }
    devkit::Session::instance().report("clone", {{"part", parts.front()->name}, {"files", written}});
    return status;
}

}  // namespace

int UF_CLONE_initialise(UF_CLONE_operation_class_t operation_class) {
    if (const int status = devkit::enterUf("UF_CLONE_initialise")) return status;
    auto& session = devkit::Session::instance().cloneSession;
    if (session) return UF_CLONE_err_active;
    if (operation_class != UF_CLONE_export_operation) return UF_CLONE_err_invalid_setting;
    session = std::make_shared<devkit::CloneSession>();
    return 0;
}

int UF_CLONE_terminate() {
    const int status = devkit::enterUf("UF_CLONE_terminate");
    if (devkit::status::refused(status)) return status;
    auto& session = devkit::Session::instance().cloneSession;
    const bool wasActive = session != nullptr;
    session.reset();
    return status != 0 || wasActive ? status : UF_CLONE_err_not_active;
}

int UF_CLONE_init_naming_failures(UF_CLONE_naming_failures_p_t failures) {
    if (const int status = enterSession("UF_CLONE_init_naming_failures")) return status;
    *failures = {};
    return 0;
}

int UF_CLONE_set_def_action(UF_CLONE_action_t action) {
    if (const int status = enterSession("UF_CLONE_set_def_action")) return status;
    if (action != UF_CLONE_overwrite && action != UF_CLONE_use_existing) return UF_CLONE_err_invalid_setting;
    cloneSession().action = action;
    return 0;
}

int UF_CLONE_set_def_directory(const char* directory_name) {
    if (const int status = enterSession("UF_CLONE_set_def_directory")) return status;
    cloneSession().directory = devkit::pathOf(devkit::utf8FromNarrow(directory_name));
    return 0;
}

int UF_CLONE_set_assoc_file_root_dir(const char*) {
    return enterSession("UF_CLONE_set_assoc_file_root_dir");
}

int UF_CLONE_set_family_treatment(UF_CLONE_family_treatment_t) {
    return enterSession("UF_CLONE_set_family_treatment");
}

int UF_CLONE_set_def_naming(UF_CLONE_naming_technique_t naming_technique) {
    if (const int status = enterSession("UF_CLONE_set_def_naming")) return status;
    if (naming_technique == UF_CLONE_default_naming) return UF_CLONE_err_invalid_setting;
    cloneSession().naming = naming_technique;
    return 0;
}

int UF_CLONE_set_name_rule(UF_CLONE_name_rule_def_p_t name_rule, UF_CLONE_naming_failures_p_t naming_failures) {
    if (const int status = enterSession("UF_CLONE_set_name_rule")) return status;
    const std::string rule = name_rule->base_string != nullptr ? name_rule->base_string : "";
    if (cloneSession().naming != UF_CLONE_naming_rule || rule.empty()) return UF_CLONE_err_invalid_setting;
    cloneSession().nameRule = rule;
    return reportFailures(naming_failures);
}

int UF_CLONE_set_dryrun(logical dryrun) {
    if (const int status = enterSession("UF_CLONE_set_dryrun")) return status;
    return dryrun ? UF_CLONE_err_invalid_setting : 0;
}

int UF_CLONE_add_assembly(const char* part_name, UF_PART_load_status_p_t load_status) {
    if (const int status = enterSession("UF_CLONE_add_assembly")) return status;
    *load_status = {};
    if (const int status = add(devkit::utf8FromNarrow(part_name))) return status;
    const auto missing = addMembers();
    load_status->failed = !missing.empty();
    load_status->n_parts = static_cast<int>(missing.size());
    load_status->file_names = devkit::newStrings(missing);
    load_status->statuses = devkit::newStatuses(missing.size(), UF_CLONE_err_comp_not_found);
    return 0;
}

int UF_CLONE_add_part(const char* part_name) {
    if (const int status = enterSession("UF_CLONE_add_part")) return status;
    return add(devkit::utf8FromNarrow(part_name));
}

int UF_CLONE_apply_defaults(UF_CLONE_naming_failures_p_t naming_failures) {
    if (const int status = enterSession("UF_CLONE_apply_defaults")) return status;
    return reportFailures(naming_failures);
}

int UF_CLONE_perform_clone(UF_CLONE_naming_failures_p_t naming_failures) {
    if (const int status = enterSession("UF_CLONE_perform_clone")) return status;
    const int failures = reportFailures(naming_failures);
    const int status = perform();
    return status != 0 ? status : failures;
}
