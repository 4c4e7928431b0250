#include "export/component_walk.h"

#include <NXOpen/Assemblies_Component.hxx>
#include <NXOpen/Assemblies_ComponentAssembly.hxx>
#include <NXOpen/Part.hxx>

#include <unordered_set>
#include <vector>

namespace pivra {

using NXOpen::Assemblies::Component;

namespace {

/// A component whose children are being walked.
struct Level {
    NXOpen::BasePart* part;
    std::vector<Component*> children;
    std::size_t next = 0;
};

}  // namespace

Component* rootComponent(NXOpen::BasePart* part) {
    NXOpen::Assemblies::ComponentAssembly* assembly = part != nullptr ? part->ComponentAssembly() : nullptr;
    return assembly != nullptr ? assembly->RootComponent() : nullptr;
}

void walkComponents(NXOpen::BasePart& assembly, Component& root, const std::function<bool(NXOpen::Part&)>& visit) {
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
        auto* part = dynamic_cast<NXOpen::Part*>(component->Prototype());
        if (part != nullptr && !visit(*part)) return;
        descend(part, *component);
    }
}

}  // namespace pivra
