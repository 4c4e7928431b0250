// Reading and setting one property of a block. Each such call fetches the block's property list and deletes it again; a
// block that the layout lacks is passed over. Host's thread; host exceptions pass through. Texts are UTF-8.
#pragma once

#include <optional>
#include <string>

namespace NXOpen::BlockStyler {
class BlockDialog;
class UIBlock;
}  // namespace NXOpen::BlockStyler

namespace ui {

using NXOpen::BlockStyler::BlockDialog;

/// The block with that id at any depth, or null.
NXOpen::BlockStyler::UIBlock* findBlock(BlockDialog& dialog, const char* blockId);

void setLabel(BlockDialog& dialog, const char* blockId, const std::string& text);
/// `file` is the name of a bitmap in the plug-in's application folder.
void setBitmap(BlockDialog& dialog, const char* blockId, const std::string& file);
void setTooltip(BlockDialog& dialog, const char* blockId, const std::string& text);
void setVisible(BlockDialog& dialog, const char* blockId, bool visible);

/// The chosen member of an enumeration: its text as the host gives it, and its number.
struct EnumerationValue {
    std::string text;
    int number = -1;
};

/// Absent when the layout lacks the block.
std::optional<EnumerationValue> enumerationValue(BlockDialog& dialog, const char* blockId);

}  // namespace ui
