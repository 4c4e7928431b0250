#include "platform/module.h"

#include "platform/windows_support.h"

#include <windows.h>

#include <stdexcept>

namespace platform {

std::filesystem::path moduleFileName() {
    HMODULE module = nullptr;
    constexpr DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!GetModuleHandleExW(flags, reinterpret_cast<const wchar_t*>(&moduleFileName), &module) || !module) {
        throw std::runtime_error("Failed to resolve nx-integration module path.");
    }
    auto name = readTruncatedText([module](wchar_t* buffer, std::size_t size) {
        return GetModuleFileNameW(module, buffer, static_cast<DWORD>(size));
    });
    if (name.empty()) throw std::runtime_error("Failed to read nx-integration module filename.");
    return name;
}

}  // namespace platform
