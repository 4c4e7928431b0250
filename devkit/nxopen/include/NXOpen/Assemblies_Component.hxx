// One place of a part in an assembly.
#pragma once

#include <NXOpen/NXObject.hxx>

#include <cstddef>
#include <vector>

namespace NXOpen::Assemblies {

class NXOPEN_EXPORT Component : public NXObject {
 public:
    /// The root of `assembly`, and its component number `index`.
    explicit Component(devkit::PartData& assembly) : assembly_(assembly) {}
    Component(devkit::PartData& assembly, std::size_t index) : assembly_(assembly), index_(index), isRoot_(false) {}

    /// The placed part; null when it is not loaded.
    INXObject* Prototype();
    NXString DisplayName();
    /// In the placed part's order. May hold nulls.
    std::vector<Component*> GetChildren();

    /// The part that the component refers to, whether or not it is loaded; null when the session knows no such part. Of
    /// the stand-in alone.
    devkit::PartData* referencedPart() const;

 private:
    const devkit::ComponentData& placement() const;
    devkit::PartData* placedPart() const;

    devkit::PartData& assembly_;
    std::size_t index_ = 0;
    bool isRoot_ = true;
    std::vector<Component*> children_;
};

}  // namespace NXOpen::Assemblies
