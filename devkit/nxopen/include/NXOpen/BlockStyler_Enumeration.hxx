// A choice of one from a list.
#pragma once

#include <NXOpen/BlockStyler_UIBlock.hxx>

#include <vector>

namespace NXOpen::BlockStyler {

class NXOPEN_EXPORT Enumeration : public UIBlock {
 public:
    using UIBlock::UIBlock;

    std::vector<NXString> GetEnumMembers();
    /// The first member becomes the chosen one.
    void SetEnumMembers(const std::vector<NXString>& members);
    /// The text of the chosen member; empty for an empty list.
    NXString ValueAsString();
    void SetValueAsString(const NXString& value);
    void SetValueAsString(const char* value);
};

}  // namespace NXOpen::BlockStyler
