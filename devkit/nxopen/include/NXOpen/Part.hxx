// A part with geometry and drawings.
#pragma once

#include <NXOpen/BasePart.hxx>

namespace NXOpen {

namespace Drawings {
class DrawingSheetCollection;
}

class NXOPEN_EXPORT Part : public BasePart {
 public:
    explicit Part(devkit::PartData& data);
    ~Part() override;

    Drawings::DrawingSheetCollection* DrawingSheets();

 private:
    std::unique_ptr<Drawings::DrawingSheetCollection> sheets_;
};

}  // namespace NXOpen
