// What went wrong, as a text for a message box or the log. Any thread.
//
// Texts of Windows and of the standard library's error categories are in the system's code page with some compilers,
// and those of host exceptions may be. The texts returned here are UTF-8.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <system_error>

namespace platform {

std::string errorText(const std::error_code& error);

/// The text of the exception that is being handled, or `otherwise` when it carries none. Only inside a catch block.
std::string currentErrorText(const char* otherwise);

/// The same, and behind it, each after a blank, the texts of the exceptions that are nested in it
/// (std::throw_with_nested). For the log, which names the cause of what the user is told.
std::string currentErrorChain(const char* otherwise);

/// Runs `action` and returns the text of the exception that left it, "unknown" for one without text; nothing when none
/// did.
std::optional<std::string> errorOf(const std::function<void()>& action);

}  // namespace platform
