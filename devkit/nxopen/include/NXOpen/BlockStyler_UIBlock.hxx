// One block of a dialog. It lives as long as the dialog.
#pragma once

#include <NXOpen/NXString.hxx>
#include <NXOpen/TaggedObject.hxx>

namespace NXOpen::BlockStyler {

class NXOPEN_EXPORT UIBlock : public TaggedObject {
 public:
    UIBlock(devkit::DialogState& dialog, devkit::BlockData& data) : dialog_(dialog), data_(data) {}

 protected:
    devkit::DialogState& dialog_;
    devkit::BlockData& data_;
};

}  // namespace NXOpen::BlockStyler
