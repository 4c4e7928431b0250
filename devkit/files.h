// Paths as UTF-8 text and back, and whole files.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

namespace devkit {

inline std::string utf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

inline std::filesystem::path pathOf(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}

/// Whether the whole file could be written.
inline bool writeWholeFile(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream out(file, std::ios::binary);
    out << bytes;
    out.close();
    return !out.fail();
}

}  // namespace devkit
