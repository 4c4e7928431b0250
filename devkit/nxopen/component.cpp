#include <NXOpen/Assemblies_Component.hxx>
#include <NXOpen/Assemblies_ComponentAssembly.hxx>

#include "calls.h"
#include "host_objects.h"
#include "host_text.h"

namespace NXOpen::Assemblies {

Component* ComponentAssembly::RootComponent() {
    if (!devkit::enterForPointer("NXOpen::Assemblies::ComponentAssembly::RootComponent")) return nullptr;
    if (data_.components.empty()) return nullptr;
    if (root_ == nullptr) root_ = devkit::HostObjects::instance().make<Component>(data_);
    return root_;
}

const devkit::ComponentData& Component::placement() const {
    if (index_ >= assembly_.components.size()) devkit::fail("The component is no longer in its assembly.");
    return assembly_.components[index_];
}

devkit::PartData* Component::referencedPart() const {
    return isRoot_ ? &assembly_ : devkit::Session::instance().findPart(placement().part);
}

devkit::PartData* Component::placedPart() const {
    return isRoot_ || placement().loaded ? referencedPart() : nullptr;
}

INXObject* Component::Prototype() {
    if (!devkit::enterForPointer("NXOpen::Assemblies::Component::Prototype")) return nullptr;
    devkit::PartData* part = placedPart();
    return part != nullptr ? devkit::HostObjects::instance().part(*part) : nullptr;
}

NXString Component::DisplayName() {
    devkit::enterForText("NXOpen::Assemblies::Component::DisplayName");
    if (isRoot_) return devkit::hostString(assembly_.leaf);
    if (!placement().displayName.empty()) return devkit::hostString(placement().displayName);
    const devkit::PartData* part = placedPart();
    return devkit::hostString(part != nullptr ? part->leaf : placement().part);
}

std::vector<Component*> Component::GetChildren() {
    devkit::enter("NXOpen::Assemblies::Component::GetChildren");
    devkit::PartData* part = placedPart();
    if (part == nullptr) return {};
    while (children_.size() < part->components.size())
        children_.push_back(devkit::HostObjects::instance().make<Component>(*part, children_.size()));
    std::vector<Component*> result(children_.begin(), children_.begin() + part->components.size());
    for (std::size_t i = 0; i < result.size(); ++i)
        if (part->components[i].part.empty()) result[i] = nullptr;
    return result;
}

}  // namespace NXOpen::Assemblies
