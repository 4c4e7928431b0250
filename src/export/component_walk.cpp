#include "export/component_walk.h"

#include "export/nx_status.h"
#include "export/part_queries.h"
#include "nx/text.h"
#include "nx/uf_session.h"

#include <uf_assem.h>
#include <uf_cfi.h>
#include <uf_defs.h>
#include <uf_obj_types.h>
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

void walkComponents(NXOpen::BasePart& assembly, Component& root, const std::function<bool(const Placement&)>& visit) {
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
        if (!visit({component, part, prototype != nullptr})) return;
        descend(part, *component);
    }
}

std::string fileOfComponent(Component& component) {
    const nx::UfSession session;
    if (!checkNxStatus("UF_initialize", session.status())) return {};
    char file[MAX_FSPEC_BUFSIZE] = "";
    char referenceSet[UF_OBJ_NAME_BUFSIZE] = "";
    char instance[UF_CFI_MAX_FILE_NAME_BUFSIZE] = "";
    double origin[3] = {};
    double matrix[9] = {};
    double transform[4][4] = {};
    const int status =
        UF_ASSEM_ask_component_data(component.Tag(), file, referenceSet, instance, origin, matrix, transform);
    if (!checkNxStatus("UF_ASSEM_ask_component_data", status)) return {};
    ManagedPartName name;
    const bool isManaged = file[0] != '\0' && decodeEncodedName(file, name) == 0;
    return isManaged ? std::string() : nx::utf8FromLocale(file);
}

}  // namespace pivra
