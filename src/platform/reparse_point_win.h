// Reparse points, for the Windows sources of this folder.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// The reparse tag of the file or folder `name` (in extended form); 0 when it has none or cannot be asked.
std::uint32_t reparseTag(const std::wstring& name);

/// Whether what has these attributes leads somewhere else. The tag means nothing for what is no reparse point.
bool isLink(std::uint32_t attributes, std::uint32_t tag);

}  // namespace platform
