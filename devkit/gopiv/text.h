// Small texts: times, secrets, paths.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace gopiv {

/// An operation that the service refuses; what() is its message.
struct Refusal : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// An operation that fails without saying why.
struct SilentRefusal {};

/// The present moment in UTC: "YYYY-MM-DDTHH:MM:SSZ".
std::string utcNow();

/// 64 hexadecimal digits that nobody can guess.
std::string randomSecret();

/// A path from and to UTF-8.
std::filesystem::path pathFromUtf8(const std::string& text);
std::string utf8FromPath(const std::filesystem::path& path);

}  // namespace gopiv
