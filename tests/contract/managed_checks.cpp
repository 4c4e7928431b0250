// Parts that Teamcenter manages: their names, their revision, and a clone session that is set up but not performed.
#include "check.h"
#include "parts.h"

#include <export/host_numbers.h>
#include <nx/clone_records.h>
#include <nx/text.h>
#include <platform/text_encoding.h>

#include <uf_ugmgr.h>
#include <NXOpen/Assemblies_ComponentAssembly.hxx>

namespace contract {
namespace {

using namespace pivra::host_numbers;

const std::string commandLineHead = "@DB/";

/// A clone session with the settings of the plug-in's export.
class CloneSession {
 public:
    /// Throws as require(), so that nobody else's session is ended.
    CloneSession() { require("UF_CLONE_initialise", UF_CLONE_initialise(UF_CLONE_operation_class_t(cloneOperation))); }
    ~CloneSession() {
        if (isOpen_) UF_CLONE_terminate();
    }
    CloneSession(const CloneSession&) = delete;
    CloneSession& operator=(const CloneSession&) = delete;

    void setUp();
    void end() {
        isOpen_ = false;
        statuses_.note("UF_CLONE_terminate", UF_CLONE_terminate());
    }
    const Statuses& statuses() const { return statuses_; }

 private:
    void setNameRule();

    Statuses statuses_;
    bool isOpen_ = true;
};

void CloneSession::setUp() {
    const auto folder = nx::localeText(platform::utf8FromPath(temporaryFolder()));
    const auto noteOf = [this](const char* call, int status) { statuses_.note(call, status); };
    noteOf("UF_CLONE_set_def_action", UF_CLONE_set_def_action(UF_CLONE_action_t(cloneAction)));
    noteOf("UF_CLONE_set_def_directory", UF_CLONE_set_def_directory(folder.c_str()));
    noteOf("UF_CLONE_set_assoc_file_root_dir", UF_CLONE_set_assoc_file_root_dir(folder.c_str()));
    noteOf("UF_CLONE_set_family_treatment",
           UF_CLONE_set_family_treatment(UF_CLONE_family_treatment_t(familyTreatment)));
    noteOf("UF_CLONE_set_def_naming", UF_CLONE_set_def_naming(UF_CLONE_naming_technique_t(cloneNaming)));
    setNameRule();
    noteOf("UF_CLONE_set_dryrun", UF_CLONE_set_dryrun(logical{}));
}

void CloneSession::setNameRule() {
    nx::NamingFailures failures;
    statuses_.note("UF_CLONE_init_naming_failures", UF_CLONE_init_naming_failures(failures.emptied()));
    char numberOfPart[] = "${DB_PART_NO}";
    char nothing[] = "";
    UF_CLONE_name_rule_def_t rule{};
    rule.base_string = numberOfPart;
    rule.new_string = nothing;
    statuses_.note("UF_CLONE_set_name_rule", UF_CLONE_set_name_rule(&rule, failures.get()));
}

std::string commandLineName(const std::string& name) {
    const Bracket bracket;
    char* converted = nullptr;
    require("UF_UGMGR_convert_file_name_to_cli", UF_UGMGR_convert_file_name_to_cli(name.c_str(), &converted));
    const nx::HostText owned(converted);
    return owned ? owned.get() : "";
}

int add(NXOpen::BasePart& part, const std::string& name) {
    auto* assembly = part.ComponentAssembly();
    if (assembly == nullptr || assembly->RootComponent() == nullptr) return UF_CLONE_add_part(name.c_str());
    nx::LoadStatus loaded;
    return UF_CLONE_add_assembly(name.c_str(), loaded.get());
}

std::string internalName() {
    const auto name = nameOf(managedPart());
    return unless(name.rfind("%UGMGR=", 0) == 0, name);
}

std::string decoded(const std::string& name) {
    std::string number;
    require("UF_UGMGR_decode_part_file_name", decode(name, number));
    return number;
}

std::string decodedInternalName() {
    return unless(!decoded(nameOf(managedPart())).empty(), "no number");
}

std::string converted() {
    const auto name = commandLineName(nameOf(managedPart()));
    return unless(name.rfind(commandLineHead, 0) == 0, name);
}

std::string decodedCommandLineName() {
    const auto internal = nameOf(managedPart());
    const auto number = decoded(commandLineName(internal));
    return unless(!number.empty() && number == decoded(internal), number);
}

std::string refusedPath() {
    std::string number;
    const int status = decode("C:\\parts\\plate.prt", number);
    return unless(status != 0, "it gives the number \"" + number + "\"");
}

std::string refusedPathNative() {
    nativePart();
    return refusedPath();
}

std::string refusedPathManaged() {
    managedPart();
    return refusedPath();
}

std::string configuredRevision() {
    auto number = decoded(nameOf(managedPart()));
    const Bracket bracket;
    UF_UGMGR_tag_t part = UF_UGMGR_null_tag;
    UF_UGMGR_tag_t revision = UF_UGMGR_null_tag;
    char id[UF_UGMGR_NAME_BUFSIZE] = "";
    require("UF_UGMGR_ask_part_tag", UF_UGMGR_ask_part_tag(number.data(), &part));
    require("UF_UGMGR_ask_configured_rev", UF_UGMGR_ask_configured_rev(part, &revision));
    require("UF_UGMGR_ask_part_revision_id", UF_UGMGR_ask_part_revision_id(revision, id));
    return unless(id[0] != '\0', "an empty text");
}

std::string cloneSettings() {
    managedPart();
    const Bracket bracket;
    CloneSession session;
    session.setUp();
    session.end();
    return session.statuses().seen();
}

std::string cloneTakesInternalName() {
    auto& part = managedPart();
    const auto name = nameOf(part);
    const Bracket bracket;
    CloneSession session;
    session.setUp();
    const int status = add(part, name);
    if (status == 0) return {};
    return "status " + std::to_string(status) + "; the command-line name gives status " +
           std::to_string(add(part, commandLineName(name)));
}

std::string cloneNames() {
    auto& part = managedPart();
    const auto name = nameOf(part);
    const Bracket bracket;
    CloneSession session;
    session.setUp();
    if (add(part, name) != 0) require("adding the part", add(part, commandLineName(name)));
    nx::NamingFailures failures;
    require("UF_CLONE_init_naming_failures", UF_CLONE_init_naming_failures(failures.emptied()));
    Statuses statuses;
    statuses.note("UF_CLONE_apply_defaults", UF_CLONE_apply_defaults(failures.get()));
    return statuses.seen();
}

}  // namespace

std::vector<Check> managedChecks() {
    return {
        {"managed-name", internalName},
        {"managed-name-decoded", decodedInternalName},
        {"managed-command-line-name", converted},
        {"managed-command-line-name-decoded", decodedCommandLineName},
        {"path-is-no-database-name", refusedPathNative},
        {"path-is-no-database-name-in-teamcenter", refusedPathManaged},
        {"managed-revision", configuredRevision},
        {"clone-settings", cloneSettings},
        {"clone-internal-name", cloneTakesInternalName},
        {"clone-names", cloneNames},
    };
}

}  // namespace contract
