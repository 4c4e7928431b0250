// Reparse points, for the Windows sources of this folder.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// Whether what has these attributes leads somewhere else. The tag means nothing for what is no reparse point.
bool isLink(std::uint32_t attributes, std::uint32_t tag);
/// The same for the file or folder `name` (in extended form), whose tag is asked for when it matters.
bool isLink(std::uint32_t attributes, const std::wstring& name);

}  // namespace platform
