// The drawing sheets of a part, in order.
#pragma once

#include <NXOpen/Drawings_DrawingSheet.hxx>

#include <vector>

namespace NXOpen::Drawings {

class NXOPEN_EXPORT DrawingSheetCollection {
 public:
    using iterator = DrawingSheet* const*;

    explicit DrawingSheetCollection(devkit::PartData& part) : part_(part) {}

    iterator begin();
    iterator end();

 private:
    iterator first();

    devkit::PartData& part_;
    std::vector<DrawingSheet*> sheets_;
};

}  // namespace NXOpen::Drawings
