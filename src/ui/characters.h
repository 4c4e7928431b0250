// Lengths and cuts of UTF-8 text in characters (code points), never inside one.
#pragma once

#include <cstddef>
#include <string_view>

namespace ui {

std::size_t characterCount(std::string_view text);

/// The first `count` characters of `text`, or all of it.
std::string_view firstCharacters(std::string_view text, std::size_t count);

}  // namespace ui
