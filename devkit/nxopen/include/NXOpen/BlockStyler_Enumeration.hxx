// A choice of one from a list.
#pragma once

#include <NXOpen/BlockStyler_UIBlock.hxx>

#include <vector>

namespace NXOpen::BlockStyler {

class NXOPEN_EXPORT Enumeration : public UIBlock {
 public:
    using UIBlock::UIBlock;

    /// The first member becomes the chosen one.
    void SetEnumMembers(const std::vector<NXString>& members);
};

}  // namespace NXOpen::BlockStyler
