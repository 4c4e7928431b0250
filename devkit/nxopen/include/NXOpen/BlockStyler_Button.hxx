// A button; pressing it is an update.
#pragma once

#include <NXOpen/BlockStyler_UIBlock.hxx>

namespace NXOpen::BlockStyler {

class NXOPEN_EXPORT Button : public UIBlock {
 public:
    using UIBlock::UIBlock;
};

}  // namespace NXOpen::BlockStyler
