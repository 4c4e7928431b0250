// The dialog's window, as far as the plug-in touches it: only to close it.
#pragma once

namespace platform {

/// A window of the host, or null.
using WindowHandle = void*;

/// The active window of the calling thread (`GetActiveWindow`), or null. Host's thread.
WindowHandle activeWindow();

/// Posts `WM_SYSCOMMAND` (0x0112) with `SC_CLOSE` (0xF060) and 0 to `window`, as its own close control would
/// (`PostMessageA`); does nothing for null. Returns at once. Host's thread.
void postClose(WindowHandle window);

}  // namespace platform
