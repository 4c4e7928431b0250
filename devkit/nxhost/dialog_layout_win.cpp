// Places the blocks of a dialog one below the other, and in rows within a group of several columns. A hidden block
// takes no space, a text that does not fit its row is wrapped.
#include "dialog_window_win.h"
#include "text.h"

#include <windows.h>

#include <algorithm>

namespace nxhost {

namespace {

constexpr int lineHeight = 20;
constexpr int fieldHeight = 26;
constexpr int gap = 6;
constexpr int frameTop = 20;
constexpr int frameSide = 10;

bool isShown(const devkit::BlockData& block) {
    return devkit::propertyOr(block, "Show", true);
}

void move(HWND control, int x, int y, int width, int height) {
    MoveWindow(control, x, y, std::max(width, 1), height, FALSE);
}

}  // namespace

// The size of a text that is wrapped at `width`; its natural size for 0.
Extent DialogWindow::textSize(const std::string& text, int width) const {
    const auto wideText = pathOf(text).wstring();
    const auto device = GetDC(window_);
    const auto before = SelectObject(device, font_);
    SIZE natural{};
    GetTextExtentPoint32W(device, wideText.c_str(), static_cast<int>(wideText.size()), &natural);
    RECT room{0, 0, width, 0};
    if (width > 0) DrawTextW(device, wideText.c_str(), -1, &room, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    SelectObject(device, before);
    ReleaseDC(window_, device);
    const int height = static_cast<int>(std::max(room.bottom, natural.cy));
    return {width > 0 ? width : static_cast<int>(natural.cx), height};
}

bool DialogWindow::stretches(const devkit::BlockData& block) const {
    const bool isLabel = controls_.at(&block).text && !controls_.at(&block).field;
    return !isLabel || devkit::propertyOr(block, "WordWrap", false);
}

int DialogWindow::naturalWidth(const devkit::BlockData& block) const {
    const auto& controls = controls_.at(&block);
    const int picture = extentOf(controls.bitmap).width;
    const bool onlyPicture = controls.bitmap && !devkit::propertyOr(block, "DisplayBitmapLabel", false);
    const int text = onlyPicture ? 0 : textSize(devkit::textProperty(block, "Label"), 0).width + 2;
    return picture + (picture && text ? gap : 0) + text;
}

int DialogWindow::placeLabel(const Controls& controls, const std::string& text, int x, int y, int width) {
    const auto picture = extentOf(controls.bitmap);
    const int indent = controls.bitmap ? picture.width + gap : 0;
    const int textHeight = textSize(text, std::max(width - indent, 1)).height;
    const int height = std::max({picture.height, textHeight, lineHeight});
    if (controls.bitmap) move(controls.picture, x, y + (height - picture.height) / 2, picture.width, picture.height);
    move(controls.text, x + indent, y + (height - textHeight) / 2, width - indent, textHeight);
    return height;
}

// Places a block and those within it; returns its height.
int DialogWindow::place(const devkit::BlockData& block, int x, int y, int width) {
    const auto& controls = controls_.at(&block);
    const auto label = devkit::textProperty(block, "Label");
    if (!block.children.empty()) {
        const int height =
            frameTop + placeChildren(block, x + frameSide, y + frameTop, width - 2 * frameSide) + frameSide;
        move(controls.field, x, y, width, height);
        return height;
    }
    if (controls.text && !controls.field) return placeLabel(controls, label, x, y, width);
    const int indent = controls.text && IsWindowVisible(controls.text) ? naturalWidth(block) + gap : 0;
    if (indent) move(controls.text, x, y + 4, indent, lineHeight);
    // The height of a drop-down list is that of the open list.
    move(controls.field, x + indent, y, width - indent, controls.text ? 200 : fieldHeight);
    return fieldHeight;
}

int DialogWindow::placeRow(const Blocks& row, int x, int y, int width) {
    std::vector<int> widths;
    for (const auto* block : row) widths.push_back(stretches(*block) ? 0 : naturalWidth(*block));
    const int gaps = gap * (static_cast<int>(row.size()) - 1);
    int used = gaps;
    for (const int natural : widths) used += natural;
    if (used > width) {
        auto& widest = *std::max_element(widths.begin(), widths.end());
        used -= widest;
        widest = 0;
    }
    const auto open = static_cast<int>(std::count(widths.begin(), widths.end(), 0));
    int height = 0;
    for (std::size_t index = 0; index < row.size(); ++index) {
        if (widths[index] == 0) widths[index] = std::max((width - used) / open, 1);
        height = std::max(height, place(*row[index], x, y, widths[index]));
        x += widths[index] + gap;
    }
    return height;
}

int DialogWindow::placeChildren(const devkit::BlockData& group, int x, int y, int width) {
    const auto columns = static_cast<std::size_t>(std::max(devkit::propertyOr(group, "Column", 1), 1));
    Blocks shown;
    for (const auto& child : group.children)
        if (isShown(*child)) shown.push_back(child.get());
    int height = 0;
    for (std::size_t start = 0; start < shown.size(); start += columns) {
        const auto end = std::min(start + columns, shown.size());
        const Blocks row(shown.begin() + static_cast<std::ptrdiff_t>(start),
                         shown.begin() + static_cast<std::ptrdiff_t>(end));
        if (height) height += gap;
        height += placeRow(row, x, y + height, width);
    }
    return height;
}

}  // namespace nxhost
