// Paths as UTF-8 text and back, and replacing in text.
#pragma once

#include <filesystem>
#include <regex>
#include <string>

namespace nxhost {

inline std::string utf8(const std::filesystem::path& path) {
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

/// `path` in UTF-8 with forward slashes.
inline std::string genericUtf8(const std::filesystem::path& path) {
    const auto text = path.generic_u8string();
    return {text.begin(), text.end()};
}

inline std::filesystem::path pathOf(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

/// `text` with every `from` replaced by `to`; `from` must not be empty.
std::string replaced(std::string text, const std::string& from, const std::string& to);

/// Fits a UUID.
const std::regex& uuidPattern();

/// The bytes of `file`, and "" when it cannot be read.
std::string readFile(const std::filesystem::path& file);

/// Writes `file` and the folders above it. Throws std::runtime_error.
void writeFile(const std::filesystem::path& file, const std::string& bytes);

}  // namespace nxhost
