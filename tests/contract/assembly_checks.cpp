// Assemblies: what the components directly below the displayed part say of the parts that they place.
#include "check.h"
#include "parts.h"

#include <nx/text.h>
#include <platform/files.h>
#include <platform/text_encoding.h>

#include <uf_assem.h>
#include <uf_cfi.h>
#include <uf_obj_types.h>
#include <NXOpen/Assemblies_Component.hxx>
#include <NXOpen/Assemblies_ComponentAssembly.hxx>
#include <NXOpen/Part.hxx>

#include <map>

namespace contract {
namespace {

using NXOpen::Assemblies::Component;
using Components = std::vector<Component*>;

// A component of this display name is not loaded: whoever runs the checks has seen to it.
const std::string unloadedName = "contract-unloaded";

Component* rootOf(NXOpen::BasePart& part) {
    auto* assembly = part.ComponentAssembly();
    return assembly != nullptr ? assembly->RootComponent() : nullptr;
}

Components components(NXOpen::BasePart& part) {
    auto* root = rootOf(part);
    Components found;
    for (auto* component : root != nullptr ? root->GetChildren() : Components())
        if (component != nullptr) found.push_back(component);
    if (found.empty()) throw Needs{"an assembly"};
    return found;
}

Components loaded(NXOpen::BasePart& part) {
    Components found;
    for (auto* component : components(part))
        if (component->Prototype() != nullptr) found.push_back(component);
    if (found.empty()) throw Needs{"an assembly with a loaded component"};
    return found;
}

Component& unloaded(NXOpen::BasePart& part) {
    for (auto* component : components(part))
        if (nx::utf8(component->DisplayName()).find(unloadedName) != std::string::npos) return *component;
    throw Needs{"an assembly with the component \"" + unloadedName + "\", which is not loaded"};
}

/// The file or database name of the part that the component places, as the C interface gives it.
std::string placedName(Component& component) {
    const Bracket bracket;
    char name[MAX_FSPEC_BUFSIZE] = "";
    char referenceSet[UF_OBJ_NAME_BUFSIZE] = "";
    char instance[UF_CFI_MAX_FILE_NAME_BUFSIZE] = "";
    double origin[3] = {};
    double matrix[9] = {};
    double transform[4][4] = {};
    const auto tag = component.Tag();
    require("UF_ASSEM_ask_component_data",
            UF_ASSEM_ask_component_data(tag, name, referenceSet, instance, origin, matrix, transform));
    return name;
}

std::string placedFile(Component& component) {
    return nx::utf8FromLocale(placedName(component).c_str());
}

std::string rootOfSinglePart() {
    auto* root = rootOf(displayedPart());
    if (root != nullptr && !root->GetChildren().empty()) throw Needs{"a part without components"};
    return unless(root == nullptr, "a root without components");
}

std::string prototypeOfLoaded() {
    for (auto* component : loaded(displayedPart()))
        if (dynamic_cast<NXOpen::Part*>(component->Prototype()) == nullptr) return "an object that is no Part";
    return {};
}

std::string prototypeOfRepeated() {
    std::map<std::string, NXOpen::INXObject*> prototypes;
    bool repeated = false;
    for (auto* component : loaded(displayedPart())) {
        auto* prototype = component->Prototype();
        const auto [first, isNew] = prototypes.emplace(placedName(*component), prototype);
        if (first->second != prototype) return "two objects";
        repeated = repeated || !isNew;
    }
    if (!repeated) throw Needs{"an assembly with a part that is placed twice"};
    return {};
}

std::string prototypeOfUnloaded() {
    return unless(unloaded(displayedPart()).Prototype() == nullptr, "an object");
}

std::string childrenOfUnloaded() {
    return unless(unloaded(displayedPart()).GetChildren().empty(), "components");
}

std::string fileOfLoaded() {
    for (auto* component : loaded(nativePart())) {
        auto* part = dynamic_cast<NXOpen::Part*>(component->Prototype());
        auto file = placedFile(*component);
        if (part != nullptr && file != nx::utf8(part->FullPath())) return file;
    }
    return {};
}

std::string fileOfUnloaded() {
    auto file = placedFile(unloaded(nativePart()));
    return unless(platform::isRegularFile(platform::pathFromUtf8(file)), file);
}

std::string databaseNameOfLoaded() {
    for (auto* component : loaded(managedPart())) {
        auto* part = dynamic_cast<NXOpen::Part*>(component->Prototype());
        auto name = placedName(*component);
        std::string placed;
        std::string own;
        if (decode(name, placed) != 0) return name;
        if (part != nullptr && decode(nameOf(*part), own) == 0 && placed != own) return name;
    }
    return {};
}

std::string databaseNameOfUnloaded() {
    auto name = placedName(unloaded(managedPart()));
    std::string number;
    return unless(decode(name, number) == 0 && !number.empty(), name);
}

}  // namespace

std::vector<Check> assemblyChecks() {
    return {
        {"root-of-single-part", rootOfSinglePart},
        {"component-prototype", prototypeOfLoaded},
        {"component-repeated", prototypeOfRepeated},
        {"component-unloaded", prototypeOfUnloaded},
        {"component-unloaded-children", childrenOfUnloaded},
        {"component-file", fileOfLoaded},
        {"component-unloaded-file", fileOfUnloaded},
        {"component-database-name", databaseNameOfLoaded},
        {"component-unloaded-database-name", databaseNameOfUnloaded},
    };
}

}  // namespace contract
