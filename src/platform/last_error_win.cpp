#include <platform/last_error.h>

#include <windows.h>

namespace platform {

std::error_code lastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

}  // namespace platform
