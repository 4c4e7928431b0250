// The process's environment: variables, and the user's temporary folder.
#pragma once

#include <filesystem>
#include <optional>

namespace platform {

/// Value of the environment variable `name` (ASCII) as a path; absent when it is not set, and may be empty. Values of
/// any length are read whole. Any thread.
std::optional<std::filesystem::path> environmentPath(const char* name);

/// The folder that the system names for temporary files (`GetTempPathW` with room for 261 characters); absent when the
/// system gives none or one that does not fit. Any thread.
std::optional<std::filesystem::path> userTempDirectory();

}  // namespace platform
