// A part of the session.
#pragma once

#include <NXOpen/NXObject.hxx>

#include <memory>

namespace NXOpen {

class PartSaveStatus;
class PlotManager;
namespace Assemblies {
class ComponentAssembly;
}

class NXOPEN_EXPORT BasePart : public NXObject {
 public:
    enum SaveComponents { SaveComponentsFalse, SaveComponentsTrue };
    enum CloseAfterSave { CloseAfterSaveFalse, CloseAfterSaveTrue };

    explicit BasePart(devkit::PartData& data);
    ~BasePart() override;

    NXString FullPath();
    NXString Leaf();
    NXString UniqueIdentifier();

    /// The caller deletes the status.
    PartSaveStatus* Save(SaveComponents saveComponents, CloseAfterSave close);

    Assemblies::ComponentAssembly* ComponentAssembly();
    NXOpen::PlotManager* PlotManager();

    /// The model behind the part; of the stand-in alone.
    devkit::PartData& data() { return data_; }

 private:
    devkit::PartData& data_;
    std::unique_ptr<Assemblies::ComponentAssembly> assembly_;
    std::unique_ptr<NXOpen::PlotManager> plotManager_;
};

}  // namespace NXOpen
