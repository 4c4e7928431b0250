// A frame around blocks.
#pragma once

#include <NXOpen/BlockStyler_UIBlock.hxx>

namespace NXOpen::BlockStyler {

class NXOPEN_EXPORT Group : public UIBlock {
 public:
    using UIBlock::UIBlock;
};

}  // namespace NXOpen::BlockStyler
