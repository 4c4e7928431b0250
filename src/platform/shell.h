// Opening an address in the user's browser.
#pragma once

#include <string>

namespace platform {

/// Asks the shell to perform the verb "open" on `address` (an http or https address, ASCII), with no parameters and no
/// directory, shown normally (`ShellExecuteA`). Returns the shell's result: 32 or less is a failure; more says only
/// that a program was started. Host's thread.
int shellOpen(const std::string& address);

/// Shell results up to this value are failures.
inline constexpr int shellFailureLimit = 32;

}  // namespace platform
