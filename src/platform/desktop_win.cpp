#include "platform/desktop.h"

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>

#include <cstdint>

namespace platform {

namespace {

/// Initialises COM on the calling thread as the shell needs it, unless the host has initialised it already.
class ComApartment {
 public:
    ComApartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ~ComApartment() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

 private:
    HRESULT result_;
};

}  // namespace

int shellOpen(const std::string& address) {
    const ComApartment apartment;
    const HINSTANCE result = ShellExecuteA(nullptr, "open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return static_cast<int>(reinterpret_cast<std::intptr_t>(result));
}

WindowHandle activeWindow() {
    return GetActiveWindow();
}

void postClose(WindowHandle window) {
    if (window) PostMessageA(static_cast<HWND>(window), WM_SYSCOMMAND, SC_CLOSE, 0);
}

}  // namespace platform
