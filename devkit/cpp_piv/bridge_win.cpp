#include <windows.h>

#include <stdexcept>

#include "native_library.h"

namespace cpp_piv {
namespace {

std::wstring wideText(const std::string& text) {
    const UINT codePage = AreFileApisANSI() ? CP_ACP : CP_OEMCP;
    const int size = static_cast<int>(text.size());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string utf8Text(const std::wstring& wide) {
    const int size = static_cast<int>(wide.size());
    std::string text(
        static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr)),
        '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(), static_cast<int>(text.size()), nullptr, nullptr);
    return text;
}

}  // namespace

void* loadNativeLibrary(const std::string& path) {
    const std::wstring widePath = wideText(path);
    const HMODULE library = LoadLibraryExW(widePath.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (library == nullptr) {
        const DWORD error = GetLastError();
        throw std::runtime_error("The service library \"" + utf8Text(widePath) + "\" cannot be loaded: error " +
                                 std::to_string(error) + ".");
    }
    return reinterpret_cast<void*>(library);
}

void* findNativeFunction(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(reinterpret_cast<HMODULE>(library), name));
}

}  // namespace cpp_piv
