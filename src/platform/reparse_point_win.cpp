#include <platform/reparse_point_win.h>
#include <platform/reparse_tag.h>

#include <windows.h>

namespace platform {
namespace {

// 0 when it cannot be asked.
std::uint32_t reparseTag(const std::wstring& name) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(name.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return 0;
    FindClose(search);
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? found.dwReserved0 : 0;
}

}  // namespace

bool isLink(std::uint32_t attributes, std::uint32_t tag) {
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && isLinkTag(tag);
}

bool isLink(std::uint32_t attributes, const std::wstring& name) {
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && isLinkTag(reparseTag(name));
}

}  // namespace platform
