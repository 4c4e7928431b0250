// The calling thread's last error, for the Windows sources.
#pragma once

#include <system_error>

namespace platform {

/// `GetLastError` in the system category.
std::error_code lastError();

}  // namespace platform
