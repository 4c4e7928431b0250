// Paths to and from narrow text, each with its encoding named: `std::filesystem::path::string()` differs between
// compilers.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

/// `path` in UTF-8; an unpaired surrogate becomes U+FFFD. Any thread.
std::string utf8FromPath(const std::filesystem::path& path);

/// The path that `text` names in UTF-8; where names are wide, bytes that are not UTF-8 become U+FFFD. Any thread.
std::filesystem::path pathFromUtf8(std::string_view text);

/// `path` in the process's file-system code page, for interfaces that take narrow names. Throws std::length_error for a
/// name of over 2,147,483,647 units, and std::system_error for one that the code page cannot express. Any thread.
std::string fileSystemTextFromPath(const std::filesystem::path& path);

/// The path that `text` names in the process's file-system code page. Throws as fileSystemTextFromPath(). Any thread.
std::filesystem::path pathFromFileSystemText(std::string_view text);

/// Text that the system or a library made, in UTF-8: what is valid UTF-8 stays as it is, other bytes are taken for
/// letters of the system's code page. Any thread.
std::string utf8FromSystemText(std::string_view text);

}  // namespace platform
