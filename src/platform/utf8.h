// UTF-8 as bytes.
#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

/// Number of bytes of the character at the beginning of `text`; 0 when it begins with none (RFC 3629: no overlong
/// forms, no surrogates, nothing beyond U+10FFFF).
constexpr std::size_t utf8CharacterLength(std::string_view text) {
    const auto byte = [text](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    if (text.empty()) return 0;
    const unsigned first = byte(0);
    if (first < 0x80) return 1;
    if (first < 0xC2 || first > 0xF4) return 0;
    const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (text.size() < length) return 0;
    const unsigned least = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned most = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < least || byte(1) > most) return 0;
    for (std::size_t index = 2; index < length; ++index) {
        if ((byte(index) & 0xC0) != 0x80) return 0;
    }
    return length;
}

}  // namespace platform
