#include "export/assembly_components.h"

#include "export/part_queries.h"
#include "nx/component_name.h"
#include "nx/session.h"
#include "nx/text.h"
#include "platform/error_text.h"

#include <NXOpen/Assemblies_Component.hxx>
#include <NXOpen/Assemblies_ComponentAssembly.hxx>
#include <NXOpen/Part.hxx>

#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace pivra {

using NXOpen::Assemblies::Component;

namespace {

/// A component whose children are being read.
struct Level {
    NXOpen::BasePart* part;
    std::vector<Component*> children;
    std::size_t next = 0;
};

/// One reading of a component tree.
class TreeReading {
 public:
    explicit TreeReading(std::vector<Placement>& placements) : placements_(placements) {}

    void read(NXOpen::BasePart& assembly, Component& root) {
        descend(&assembly, root);
        while (!levels_.empty()) {
            Level& level = levels_.back();
            if (level.next == level.children.size()) {
                partsOnPath_.erase(level.part);
                levels_.pop_back();
            } else if (Component* component = level.children[level.next++]) {
                visit(*component);
            }
        }
    }

 private:
    void visit(Component& component) {
        auto* prototype = component.Prototype();
        auto* part = dynamic_cast<NXOpen::Part*>(prototype);
        const bool isFirst = part == nullptr || isAssembly_.try_emplace(part).second;
        placements_.push_back({&component, part, prototype != nullptr, isFirst});
        if (partsOnPath_.contains(part) || (!isFirst && !isAssembly(*part))) return;
        if (descend(part, component) && part != nullptr) isAssembly_[part] = true;
    }

    /// Whether the component has children to be read.
    bool descend(NXOpen::BasePart* part, Component& component) {
        auto children = component.GetChildren();
        if (children.empty()) return false;
        if (part != nullptr) partsOnPath_.insert(part);
        levels_.push_back({part, std::move(children)});
        return true;
    }

    /// Of a part that was placed before. A placement without children does not tell: they may be suppressed there.
    bool isAssembly(NXOpen::Part& part) {
        auto& known = isAssembly_[&part];
        if (!known && platform::errorOf([&] { known = rootComponent(&part) != nullptr; })) return true;
        return *known;
    }

    std::vector<Placement>& placements_;
    std::vector<Level> levels_;
    std::unordered_set<NXOpen::BasePart*> partsOnPath_;
    std::unordered_map<NXOpen::Part*, std::optional<bool>> isAssembly_;  // of the parts placed so far, once known
};

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
        if (root != nullptr) TreeReading(components.placements).read(*part, *root);
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
