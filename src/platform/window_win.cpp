#include <platform/window.h>

#include <windows.h>

namespace platform {

WindowHandle activeWindow() {
    return GetActiveWindow();
}

void postClose(WindowHandle window) {
    if (window) PostMessageA(static_cast<HWND>(window), WM_SYSCOMMAND, SC_CLOSE, 0);
}

}  // namespace platform
