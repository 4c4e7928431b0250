// Paths, a pattern, whole files.
#pragma once

#include <devkit/files.h>

#include <regex>
#include <string>

namespace nxhost {

using devkit::pathOf;
using devkit::utf8;

/// `path` in UTF-8 with forward slashes.
inline std::string genericUtf8(const std::filesystem::path& path) {
    const auto text = path.generic_u8string();
    return {text.begin(), text.end()};
}

/// Matches a UUID.
const std::regex& uuidPattern();

/// The bytes of `file`, and "" when it cannot be read.
std::string readFile(const std::filesystem::path& file);

/// Writes `file` and the folders above it. Throws std::runtime_error.
void writeFile(const std::filesystem::path& file, const std::string& bytes);

}  // namespace nxhost
