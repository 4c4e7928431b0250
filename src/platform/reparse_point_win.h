// Reparse points, for the Windows sources of this folder.
#pragma once

#include <platform/reparse_tag.h>

#include <windows.h>

#include <string>

namespace platform {

/// The reparse tag of the file or folder `name` (in extended form); 0 when it has none or cannot be asked.
inline DWORD reparseTag(const std::wstring& name) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(name.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return 0;
    FindClose(search);
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? found.dwReserved0 : 0;
}

/// Whether what has these attributes leads somewhere else. The tag means nothing for what is no reparse point.
inline bool isLink(DWORD attributes, DWORD tag) {
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && isLinkTag(tag);
}

}  // namespace platform
