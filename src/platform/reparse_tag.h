// Which reparse points of Windows lead somewhere else.
#pragma once

#include <cstdint>

namespace platform {

/// True for the tag of a symbolic link, a mount point or another stand-in for a name ("name surrogate", bit 29). False
/// for the tags of files that are deduplicated, compressed or kept in a cloud: those are ordinary files and folders. A
/// tag that the system does not tell (0) counts as a link, so that it is never entered.
constexpr bool isLinkTag(std::uint32_t tag) {
    constexpr std::uint32_t nameSurrogate = 0x20000000;
    return tag == 0 || (tag & nameSurrogate) != 0;
}

}  // namespace platform
