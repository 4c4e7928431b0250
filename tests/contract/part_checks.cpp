// The displayed part: its name, attribute and family, what the components directly below it say of the parts that they
// place, and what Teamcenter says of it. Whoever runs the checks has seen to it that there are parts of the names
// below.
#include "check.h"

#include "export/host_numbers.h"
#include "nx/clone_records.h"
#include "nx/component_name.h"
#include "platform/files.h"

#include <uf_part.h>
#include <uf_ugmgr.h>
#include <NXOpen/Assemblies_Component.hxx>
#include <NXOpen/Assemblies_ComponentAssembly.hxx>
#include <NXOpen/Part.hxx>

#include <algorithm>
#include <filesystem>
#include <optional>

namespace contract {
namespace {

using namespace pivra::host_numbers;
using NXOpen::Part;
using NXOpen::Assemblies::Component;

std::filesystem::path pathOf(NXOpen::BasePart& part) {
    return platform::pathFromUtf8(nx::utf8(part.FullPath()));
}

NXOpen::BasePart& displayedPart() {
    if (auto* part = nx::displayedPart()) return *part;
    throw Needs{"a displayed part"};
}

NXOpen::BasePart& nativePart() {
    if (platform::isRegularFile(pathOf(displayedPart()))) return displayedPart();
    throw Needs{"a displayed part with a file on the local disk"};
}

NXOpen::BasePart& managedPart() {
    if (!pathOf(displayedPart()).is_absolute()) return displayedPart();
    throw Needs{"a displayed part that Teamcenter manages"};
}

/// The name that the C interface gives for the part, in its own code page.
std::string nameOf(NXOpen::BasePart& part) {
    char name[MAX_FSPEC_BUFSIZE] = "";
    succeed({{"UF_PART_ask_part_name", UF_PART_ask_part_name(part.Tag(), name)}});
    return name;
}

/// The part's number in such a name; absent when the name cannot be decoded.
std::optional<std::string> decode(const std::string& name) {
    char number[UF_UGMGR_PARTNO_BUFSIZE] = "";
    char revision[UF_UGMGR_PARTREV_BUFSIZE] = "";
    char fileType[UF_UGMGR_FTYPE_BUFSIZE] = "";
    char fileName[UF_UGMGR_FNAME_BUFSIZE] = "";
    if (UF_UGMGR_decode_part_file_name(name.c_str(), number, revision, fileType, fileName) != 0) return std::nullopt;
    return number;
}

Component* root() {
    auto* assembly = displayedPart().ComponentAssembly();
    return assembly != nullptr ? assembly->RootComponent() : nullptr;
}

std::vector<Component*> components() {
    auto found = root() != nullptr ? root()->GetChildren() : std::vector<Component*>();
    std::erase(found, nullptr);
    return found;
}

Component& unloaded() {
    for (auto* component : components())
        if (nx::utf8(component->DisplayName()).find("contract-unloaded") != std::string::npos) return *component;
    throw Needs{"an assembly with the component \"contract-unloaded\", which is not loaded"};
}

/// The file or database name of the part that `unloaded()` places, as the C interface gives it.
std::string unloadedName() {
    char name[MAX_FSPEC_BUFSIZE] = "";
    succeed({{"UF_ASSEM_ask_component_data", nx::askComponentName(unloaded().Tag(), name)}});
    return name;
}

int addToClone(const std::string& name, bool isAssembly) {
    if (!isAssembly) return UF_CLONE_add_part(name.c_str());
    nx::LoadStatus loaded;
    return UF_CLONE_add_assembly(name.c_str(), loaded.get());
}

/// Sets a clone session up as the plug-in's export does, adds the displayed part and ends it without performing it.
Calls cloneSession(const std::string& name) {
    const auto folder = nx::localeText(platform::utf8FromPath(temporaryFolder()));
    const auto treatment = UF_CLONE_family_treatment_t(familyTreatment);
    const bool isAssembly = root() != nullptr;
    nx::NamingFailures failures;
    char numberOfPart[] = "${DB_PART_NO}";
    char nothing[] = "";
    UF_CLONE_name_rule_def_t rule{};
    rule.base_string = numberOfPart;
    rule.new_string = nothing;
    // Throws when another session is open, which must not be ended here.
    succeed({{"UF_CLONE_initialise", UF_CLONE_initialise(UF_CLONE_operation_class_t(cloneOperation))}});
    return {
        {"UF_CLONE_init_naming_failures", UF_CLONE_init_naming_failures(failures.emptied())},
        {"UF_CLONE_set_def_action", UF_CLONE_set_def_action(UF_CLONE_action_t(cloneAction))},
        {"UF_CLONE_set_def_directory", UF_CLONE_set_def_directory(folder.c_str())},
        {"UF_CLONE_set_assoc_file_root_dir", UF_CLONE_set_assoc_file_root_dir(folder.c_str())},
        {"UF_CLONE_set_family_treatment", UF_CLONE_set_family_treatment(treatment)},
        {"UF_CLONE_set_def_naming", UF_CLONE_set_def_naming(UF_CLONE_naming_technique_t(cloneNaming))},
        {"UF_CLONE_set_name_rule", UF_CLONE_set_name_rule(&rule, failures.get())},
        {"UF_CLONE_init_naming_failures", UF_CLONE_init_naming_failures(failures.emptied())},
        {"UF_CLONE_set_dryrun", UF_CLONE_set_dryrun(logical{})},
        {"adding the part", addToClone(name, isAssembly)},
        {"UF_CLONE_apply_defaults", UF_CLONE_apply_defaults(failures.get())},
        {"UF_CLONE_terminate", UF_CLONE_terminate()},
    };
}

void addComponentChecks() {
    check("root-of-single-part", [] {
        if (!components().empty()) throw Needs{"a part without components"};
        expect(root() == nullptr, "a root without components");
    });
    check("component-prototype", [] {
        bool anyLoaded = false;
        for (auto* component : components()) {
            auto* prototype = component->Prototype();
            expect(prototype == nullptr || dynamic_cast<Part*>(prototype) != nullptr, "an object that is no Part");
            anyLoaded = anyLoaded || prototype != nullptr;
        }
        if (!anyLoaded) throw Needs{"an assembly with a loaded component"};
    });
    check("component-unloaded", [] { expect(unloaded().Prototype() == nullptr, "an object"); });
    check("component-unloaded-children", [] { expect(unloaded().GetChildren().empty(), "components"); });
    check("component-unloaded-file", [] {
        nativePart();
        const auto file = nx::utf8FromLocale(unloadedName().c_str());
        expect(platform::isRegularFile(platform::pathFromUtf8(file)), file);
    });
    check("component-unloaded-database-name", [] {
        managedPart();
        const auto name = unloadedName();
        expect(!decode(name).value_or("").empty(), name);
    });
}

void addTeamcenterChecks() {
    check("path-is-no-database-name", [] { expect(!decode("C:\\parts\\plate.prt"), "it is decoded"); });
    check("managed-name", [] {
        const auto name = nameOf(managedPart());
        expect(!decode(name).value_or("").empty(), name);
    });
    check("managed-command-line-name", [] {
        const auto internal = nameOf(managedPart());
        char* converted = nullptr;
        succeed(
            {{"UF_UGMGR_convert_file_name_to_cli", UF_UGMGR_convert_file_name_to_cli(internal.c_str(), &converted)}});
        const nx::HostText name(converted);
        expect(name && decode(name.get()) && decode(name.get()) == decode(internal), name ? name.get() : "null");
    });
    check("managed-revision", [] {
        auto number = decode(nameOf(managedPart())).value_or("");
        UF_UGMGR_tag_t part = UF_UGMGR_null_tag;
        UF_UGMGR_tag_t revision = UF_UGMGR_null_tag;
        char id[UF_UGMGR_NAME_BUFSIZE] = "";
        succeed({{"UF_UGMGR_ask_part_tag", UF_UGMGR_ask_part_tag(number.data(), &part)},
                 {"UF_UGMGR_ask_configured_rev", UF_UGMGR_ask_configured_rev(part, &revision)},
                 {"UF_UGMGR_ask_part_revision_id", UF_UGMGR_ask_part_revision_id(revision, id)}});
        expect(id[0] != '\0', "an empty text");
    });
    check("clone-session", [] { succeed(cloneSession(nameOf(managedPart()))); });
}

}  // namespace

void addPartChecks() {
    check("part-path-letters", [] {
        const auto path = platform::utf8FromPath(pathOf(nativePart()));
        const bool isAscii = std::all_of(path.begin(), path.end(), [](unsigned char letter) { return letter < 0x80; });
        if (isAscii || !nx::exactLocaleText(path))
            throw Needs{"a native part with other letters than ASCII in its path, all of them in the code page"};
        const auto name = nx::utf8FromLocale(nameOf(nativePart()).c_str());
        expect(name == path, name);
    });
    check("part-identifier", [] { expect(!nx::utf8(nativePart().UniqueIdentifier()).empty(), "an empty text"); });
    check("attribute-no-array", [] {
        auto& part = displayedPart();
        if (nx::utf8(part.Leaf()).find("contract-attribute") == std::string::npos)
            throw Needs{"a part \"contract-attribute\" with the attribute PIVRA_CONTRACT"};
        const auto title = nx::toHost("PIVRA_CONTRACT");
        const auto type = NXOpen::NXObject::AttributeTypeString;
        expect(part.HasUserAttribute(title, type, -1), "it is not found");
        const auto text = nx::utf8(part.GetUserAttributeAsString(title, type, -1));
        expect(text == "Ø80", text);
    });
    check("family-none", [] {
        const tag_t part = displayedPart().Tag();
        logical isInstance{};
        logical isTemplate{};
        tag_t instance = NULL_TAG;
        succeed({{"UF_PART_is_family_instance", UF_PART_is_family_instance(part, &isInstance)},
                 {"UF_PART_is_family_template", UF_PART_is_family_template(part, &isTemplate)},
                 {"UF_PART_ask_family_instance", UF_PART_ask_family_instance(part, &instance)}});
        if (isInstance || isTemplate) throw Needs{"a part that is in no part family"};
        expect(instance == NULL_TAG, "it has instance data");
    });
    addComponentChecks();
    addTeamcenterChecks();
}

}  // namespace contract
