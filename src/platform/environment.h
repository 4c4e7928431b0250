// Environment variables.
#pragma once

#include <filesystem>
#include <optional>

namespace platform {

/// Value of the environment variable `name` (ASCII) as a path; absent when it is not set, and may be empty. Values of
/// any length are read whole. Any thread.
std::optional<std::filesystem::path> environmentPath(const char* name);

}  // namespace platform
