// The user's temporary folder.
#pragma once

#include <filesystem>
#include <optional>

namespace platform {

/// The folder that the system names for temporary files (`GetTempPathW` with room for 261 characters); absent when the
/// system gives none or one that does not fit. Any thread.
std::optional<std::filesystem::path> userTempDirectory();

}  // namespace platform
