// The user's desktop: the shell that opens an address, and the window of a dialog. Host's thread.
#pragma once

#include <string>

namespace platform {

/// Asks the shell to perform the verb "open" on `address` (an http or https address, ASCII), with no parameters and no
/// directory, shown normally (`ShellExecuteA`). Returns the shell's result: 32 or less is a failure; more says only
/// that a program was started.
int shellOpen(const std::string& address);

/// Shell results up to this value are failures.
inline constexpr int shellFailureLimit = 32;

/// A window of the host, or null.
using WindowHandle = void*;

/// The active window of the calling thread (`GetActiveWindow`), or null.
WindowHandle activeWindow();

/// Posts `WM_SYSCOMMAND` (0x0112) with `SC_CLOSE` (0xF060) and 0 to `window`, as its own close control would
/// (`PostMessageA`); does nothing for null. Returns at once.
void postClose(WindowHandle window);

}  // namespace platform
