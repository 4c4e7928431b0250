// A line of text with a bitmap.
#pragma once

#include <NXOpen/BlockStyler_UIBlock.hxx>

namespace NXOpen::BlockStyler {

class NXOPEN_EXPORT Label : public UIBlock {
 public:
    using UIBlock::UIBlock;

    NXString Bitmap();
    void SetBitmap(const NXString& bitmap);
    void SetBitmap(const char* bitmap);
};

}  // namespace NXOpen::BlockStyler
