// Names without a length limit, for the Windows sources of this folder.
#pragma once

#include <filesystem>
#include <string>

namespace platform {

/// `path` in full, in the form `\\?\...` that the wide functions of Windows take at any length (plain names end at 260
/// characters, unless the host's process and the computer are set up otherwise). A path that Windows cannot complete
/// comes back as it is. Any thread.
std::wstring extendedPath(const std::filesystem::path& path);

}  // namespace platform
