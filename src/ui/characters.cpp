#include "ui/characters.h"

#include <algorithm>

namespace ui {
namespace {

bool beginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

}  // namespace

std::size_t characterCount(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
    const auto end =
        std::find_if(text.begin(), text.end(), [&](char byte) { return beginsCharacter(byte) && count-- == 0; });
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

}  // namespace ui
