// A layout file's text, checked before it is parsed.
#pragma once

#include <filesystem>
#include <string>

namespace devkit {

/// The text of `file`. Throws std::runtime_error when it cannot be read, is longer than any layout, or nests elements
/// so deep that the parser would run out of stack.
std::string readLayoutText(const std::filesystem::path& file);

}  // namespace devkit
