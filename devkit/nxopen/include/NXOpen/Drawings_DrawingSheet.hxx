// One sheet of a drawing.
#pragma once

#include <NXOpen/NXObject.hxx>

#include <cstddef>

namespace NXOpen::Drawings {

class NXOPEN_EXPORT DrawingSheet : public NXObject {
 public:
    DrawingSheet(devkit::PartData& part, std::size_t index) : part_(part), index_(index) {}

    NXString Name();
    const std::string& name() const;  ///< of the stand-in alone

    /// The part whose sheet it is; of the stand-in alone.
    const devkit::PartData& part() const { return part_; }

 private:
    devkit::PartData& part_;
    std::size_t index_;
};

}  // namespace NXOpen::Drawings
