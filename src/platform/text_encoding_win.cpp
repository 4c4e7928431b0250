#include "platform/text_encoding.h"

#include "platform/text.h"

#include <windows.h>

#include <limits>
#include <stdexcept>
#include <system_error>

namespace platform {
namespace {

constexpr UINT codePageGb18030 = 54936;

template <typename Text>
int lengthOf(const Text& text) {
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw std::length_error("The name is too long to convert.");
    }
    return static_cast<int>(text.size());
}

void require(bool succeeded, DWORD error) {
    if (!succeeded) throw std::system_error(static_cast<int>(error), std::system_category(), "name conversion");
}

std::string narrow(const std::wstring& text, UINT codePage, DWORD flags, BOOL* lost) {
    if (text.empty()) return {};
    const int length = lengthOf(text);
    const int size = WideCharToMultiByte(codePage, flags, text.data(), length, nullptr, 0, nullptr, lost);
    require(size > 0, GetLastError());
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(codePage, flags, text.data(), length, result.data(), size, nullptr, lost);
    return result;
}

std::wstring widen(std::string_view text, UINT codePage, DWORD flags) {
    if (text.empty()) return {};
    const int length = lengthOf(text);
    const int size = MultiByteToWideChar(codePage, flags, text.data(), length, nullptr, 0);
    require(size > 0, GetLastError());
    std::wstring result(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(codePage, flags, text.data(), length, result.data(), size);
    return result;
}

UINT fileSystemCodePage() {
    return AreFileApisANSI() ? GetACP() : GetOEMCP();
}

}  // namespace

std::string utf8FromPath(const std::filesystem::path& path) {
    return narrow(path.native(), CP_UTF8, 0, nullptr);
}

std::filesystem::path pathFromUtf8(std::string_view text) {
    return widen(text, CP_UTF8, 0);
}

std::string fileSystemTextFromPath(const std::filesystem::path& path) {
    const UINT codePage = fileSystemCodePage();
    // Code pages that have every character need no substitute character, and reject the parameter for it.
    if (codePage == CP_UTF8 || codePage == codePageGb18030) {
        return narrow(path.native(), codePage, WC_ERR_INVALID_CHARS, nullptr);
    }
    BOOL lost = FALSE;
    auto text = narrow(path.native(), codePage, WC_NO_BEST_FIT_CHARS, &lost);
    require(!lost, ERROR_NO_UNICODE_TRANSLATION);
    return text;
}

std::filesystem::path pathFromFileSystemText(std::string_view text) {
    return widen(text, fileSystemCodePage(), MB_ERR_INVALID_CHARS);
}

std::string utf8FromSystemText(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        std::size_t length = utf8CharacterLength(text);
        if (length > 0) {
            result += text.substr(0, length);
        } else {
            length = IsDBCSLeadByte(static_cast<BYTE>(text.front())) && text.size() > 1 ? 2 : 1;
            result += narrow(widen(text.substr(0, length), CP_ACP, 0), CP_UTF8, 0, nullptr);
        }
        text.remove_prefix(length);
    }
    return result;
}

}  // namespace platform
