// The component tree of a part.
#pragma once

#include <NXOpen/NXObject.hxx>

namespace NXOpen::Assemblies {

class Component;

class NXOPEN_EXPORT ComponentAssembly : public NXObject {
 public:
    explicit ComponentAssembly(devkit::PartData& data) : data_(data) {}

    /// Null for a part without components.
    Component* RootComponent();

 private:
    devkit::PartData& data_;
    Component* root_ = nullptr;
};

}  // namespace NXOpen::Assemblies
