// Plain text: blanks, letter case, the characters of UTF-8, and names of files. The host's names are not always paths
// of this system ("@DB/4711/A"), so they are cut as texts. Any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

/// `text` without blanks, tabs, carriage returns and line feeds (these four) at both ends.
std::string Trim(std::string_view text);

/// `text` with a blank for each ASCII control character but the tab: it can neither end a line nor begin one.
std::string oneLine(std::string text);

/// Byte-wise lower case of the letters A to Z.
std::string toLower(std::string_view text);

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

/// The finite `value`, rounded to `decimals` digits after a full stop; without a full stop for none. The host may have
/// set a locale with a decimal comma.
std::string decimalText(double value, int decimals);

/// Length of UTF-8 text in characters (code points).
std::size_t characterCount(std::string_view text);

/// The first `count` characters of UTF-8 text, or all of it.
std::string_view firstCharacters(std::string_view text, std::size_t count);

/// The text after the last "\" or "/"; all of it when there is neither.
std::string lastPathComponent(std::string_view path);

/// The last component from its last full stop on; empty when it has none, or only at its beginning.
std::string fileExtension(std::string_view path);

/// The last component without its extension.
std::string fileStem(std::string_view path);

/// Whether `path` has the extension `extension` (lower case, with its full stop), whatever the letter case.
bool hasExtension(std::string_view path, std::string_view extension);

/// `name` with each of the nine characters that Windows reserves in file names replaced by "_"; "managed" for an empty
/// name.
std::string sanitizeFileName(std::string_view name);

}  // namespace platform
