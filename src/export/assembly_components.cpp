#include "export/assembly_components.h"

#include "export/part_queries.h"
#include "nx/component_name.h"
#include "nx/session.h"
#include "nx/text.h"
#include "platform/error_text.h"

#include <NXOpen/Assemblies_Component.hxx>
#include <NXOpen/Assemblies_ComponentAssembly.hxx>
#include <NXOpen/Part.hxx>

#include <unordered_set>

namespace pivra {

using NXOpen::Assemblies::Component;

namespace {

/// A component whose children are being read.
struct Level {
    NXOpen::BasePart* part;
    std::vector<Component*> children;
    std::size_t next = 0;
};

void readBelow(NXOpen::BasePart& assembly, Component& root, std::vector<Placement>& placements) {
    std::vector<Level> levels;
    std::unordered_set<NXOpen::BasePart*> partsOnPath;
    const auto descend = [&](NXOpen::BasePart* part, Component& component) {
        if (part != nullptr && !partsOnPath.insert(part).second) return;
        levels.push_back({part, component.GetChildren()});
    };
    descend(&assembly, root);
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.children.size()) {
            partsOnPath.erase(level.part);
            levels.pop_back();
            continue;
        }
        Component* component = level.children[level.next++];
        if (component == nullptr) continue;
        auto* prototype = component->Prototype();
        auto* part = dynamic_cast<NXOpen::Part*>(prototype);
        placements.push_back({component, part, prototype != nullptr});
        descend(part, *component);
    }
}

}  // namespace

Component* rootComponent(NXOpen::BasePart* part) {
    NXOpen::Assemblies::ComponentAssembly* assembly = part != nullptr ? part->ComponentAssembly() : nullptr;
    return assembly != nullptr ? assembly->RootComponent() : nullptr;
}

AssemblyComponents readComponents(NXOpen::BasePart* part) {
    AssemblyComponents components;
    components.error = platform::errorOf([&] {
        Component* root = rootComponent(part);
        components.isAssembly = root != nullptr;
        if (root != nullptr) readBelow(*part, *root, components.placements);
    });
    return components;
}

std::optional<std::string> fileOfComponent(Component& component) {
    const nx::UfSession session;
    if (!nx::checkNxStatus("UF_initialize", session.status())) return std::nullopt;
    char file[MAX_FSPEC_BUFSIZE] = "";
    const int status = nx::askComponentName(component.Tag(), file);
    if (!nx::checkNxStatus("UF_ASSEM_ask_component_data", status)) return std::nullopt;
    ManagedPartName name;
    const bool isManaged = file[0] != '\0' && decodeEncodedName(file, name) == 0;
    return isManaged ? std::string() : nx::utf8FromLocale(file);
}

}  // namespace pivra
