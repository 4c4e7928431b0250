#include <uf_clone.h>

#include "c_memory.h"
#include "calls.h"
#include "clone_session.h"
#include "host_text.h"
#include "managed_name.h"
#include "uf_status.h"

namespace {

int enterSession(const char* name) {
    if (const int status = devkit::enterUf(name)) return status;
    return devkit::cloneSession().active() ? 0 : UF_CLONE_err_not_active;
}

/// Reports the failures that the session is told to have, and those of parts that get no name.
int reportFailures(UF_CLONE_naming_failures_p_t failures) {
    std::vector<std::string> inputs;
    std::vector<std::string> outputs;
    for (const devkit::PartData* part : devkit::cloneSession().unnamed()) {
        inputs.push_back(devkit::encodeManagedName(*part->managed));
        outputs.emplace_back();
    }
    for (int i = 0; i < devkit::Session::instance().clone.namingFailures; ++i) {
        inputs.push_back("@DB/input" + std::to_string(i) + "/A");
        outputs.push_back(i % 2 == 0 ? "output" + std::to_string(i) : "");
    }
    if (inputs.empty()) return 0;
    failures->n_failures = static_cast<int>(inputs.size());
    failures->statuses = devkit::newNumbers(std::vector<int>(inputs.size(), UF_CLONE_err_naming_failures));
    failures->input_names = devkit::newStrings(inputs);
    failures->output_names = devkit::newStrings(outputs);
    return UF_CLONE_err_naming_failures;
}

UF_PART_load_status_t loadStatus(const std::vector<devkit::MissingMember>& missing) {
    std::vector<std::string> names;
    std::vector<int> statuses;
    for (const devkit::MissingMember& member : missing) {
        names.push_back(member.name);
        statuses.push_back(member.status);
    }
    UF_PART_load_status_t status{};
    status.failed = !missing.empty();
    status.n_parts = static_cast<int>(missing.size());
    status.file_names = devkit::newStrings(names);
    status.statuses = devkit::newNumbers(statuses);
    return status;
}

}  // namespace

int UF_CLONE_initialise(UF_CLONE_operation_class_t operation_class) {
    if (const int status = devkit::enterUf("UF_CLONE_initialise")) return status;
    return devkit::cloneSession().initialise(operation_class);
}

int UF_CLONE_terminate() {
    const int status = devkit::enterUf("UF_CLONE_terminate");
    if (devkit::status::refused(status)) return status;
    const bool wasActive = devkit::cloneSession().active();
    devkit::cloneSession().reset();
    return status != 0 || wasActive ? status : UF_CLONE_err_not_active;
}

int UF_CLONE_init_naming_failures(UF_CLONE_naming_failures_p_t failures) {
    if (const int status = enterSession("UF_CLONE_init_naming_failures")) return status;
    *failures = {};
    return 0;
}

int UF_CLONE_set_def_action(UF_CLONE_action_t action) {
    if (const int status = enterSession("UF_CLONE_set_def_action")) return status;
    return devkit::cloneSession().setAction(action);
}

int UF_CLONE_set_def_directory(const char* directory_name) {
    if (const int status = enterSession("UF_CLONE_set_def_directory")) return status;
    devkit::cloneSession().setDirectory(devkit::pathFromUtf8(devkit::utf8FromNarrow(directory_name)));
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
    devkit::cloneSession().setNaming(naming_technique);
    return 0;
}

int UF_CLONE_set_name_rule(UF_CLONE_name_rule_def_p_t name_rule, UF_CLONE_naming_failures_p_t naming_failures) {
    if (const int status = enterSession("UF_CLONE_set_name_rule")) return status;
    const std::string rule = name_rule->base_string != nullptr ? name_rule->base_string : "";
    if (const int status = devkit::cloneSession().setNameRule(rule)) return status;
    return reportFailures(naming_failures);
}

int UF_CLONE_set_dryrun(logical dryrun) {
    if (const int status = enterSession("UF_CLONE_set_dryrun")) return status;
    return dryrun ? UF_CLONE_err_invalid_setting : 0;
}

int UF_CLONE_add_assembly(const char* part_name, UF_PART_load_status_p_t load_status) {
    if (const int status = enterSession("UF_CLONE_add_assembly")) return status;
    std::vector<devkit::MissingMember> missing;
    const int status = devkit::cloneSession().add(devkit::utf8FromNarrow(part_name), &missing);
    *load_status = loadStatus(missing);
    return status;
}

int UF_CLONE_add_part(const char* part_name) {
    if (const int status = enterSession("UF_CLONE_add_part")) return status;
    return devkit::cloneSession().add(devkit::utf8FromNarrow(part_name), nullptr);
}

int UF_CLONE_apply_defaults(UF_CLONE_naming_failures_p_t naming_failures) {
    if (const int status = enterSession("UF_CLONE_apply_defaults")) return status;
    return reportFailures(naming_failures);
}

int UF_CLONE_perform_clone(UF_CLONE_naming_failures_p_t naming_failures) {
    if (const int status = enterSession("UF_CLONE_perform_clone")) return status;
    const int failures = reportFailures(naming_failures);
    const int status = devkit::cloneSession().perform();
    return status != 0 ? status : failures;
}
