#include <platform/shell.h>

#include <windows.h>

#include <shellapi.h>

#include <cstdint>

namespace platform {

int shellOpen(const std::string& address) {
    const HINSTANCE result = ShellExecuteA(nullptr, "open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return static_cast<int>(reinterpret_cast<std::intptr_t>(result));
}

}  // namespace platform
