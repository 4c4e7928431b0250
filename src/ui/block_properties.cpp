#include "ui/block_properties.h"

#include "nx/text.h"

#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>
#include <NXOpen/BlockStyler_UIBlock.hxx>

#include <memory>

namespace ui {
namespace {

using NXOpen::BlockStyler::PropertyList;

std::unique_ptr<PropertyList> propertiesOf(BlockDialog& dialog, const char* blockId) {
    if (findBlock(dialog, blockId) == nullptr) return nullptr;
    return std::unique_ptr<PropertyList>(dialog.GetBlockProperties(blockId));
}

void setText(BlockDialog& dialog, const char* blockId, const char* property, const std::string& text) {
    if (const auto properties = propertiesOf(dialog, blockId)) properties->SetString(property, nx::toHost(text));
}

}  // namespace

NXOpen::BlockStyler::UIBlock* findBlock(BlockDialog& dialog, const char* blockId) {
    auto* top = dialog.TopBlock();
    return top != nullptr ? top->FindBlock(blockId) : nullptr;
}

void setLabel(BlockDialog& dialog, const char* blockId, const std::string& text) {
    setText(dialog, blockId, "Label", text);
}

void setBitmap(BlockDialog& dialog, const char* blockId, const std::string& file) {
    setText(dialog, blockId, "Bitmap", file);
}

void setTooltip(BlockDialog& dialog, const char* blockId, const std::string& text) {
    setText(dialog, blockId, "BalloonTooltipText", text);
}

void setVisible(BlockDialog& dialog, const char* blockId, bool visible) {
    if (const auto properties = propertiesOf(dialog, blockId)) properties->SetLogical("Show", visible);
}

std::optional<EnumerationValue> enumerationValue(BlockDialog& dialog, const char* blockId) {
    const auto properties = propertiesOf(dialog, blockId);
    if (!properties) return std::nullopt;
    return EnumerationValue{nx::utf8(properties->GetEnumAsString("Value")), properties->GetEnum("Value")};
}

}  // namespace ui
