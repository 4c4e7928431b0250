// The location of the plug-in's own file.
#pragma once

#include <filesystem>

namespace platform {

/// Full name of the module file (DLL) that holds this code, of any length. Adds no reference to the module.
/// Any thread. Throws std::runtime_error "Failed to resolve nx-integration module path." when the system knows no
/// module for this code, and "Failed to read nx-integration module filename." when it gives no name.
std::filesystem::path moduleFileName();

/// Folder of moduleFileName(), without a trailing separator unless it is a root ("C:\"). Throws as moduleFileName().
inline std::filesystem::path moduleDirectory() {
    return moduleFileName().parent_path();
}

}  // namespace platform
