// A block that holds others: a dialog's top.
#pragma once

#include <NXOpen/BlockStyler_UIBlock.hxx>

namespace NXOpen::BlockStyler {

class NXOPEN_EXPORT CompositeBlock : public UIBlock {
 public:
    using UIBlock::UIBlock;

    /// The block with that id at any depth, of its own class; null when there is none.
    UIBlock* FindBlock(const NXString& blockName);
};

}  // namespace NXOpen::BlockStyler
