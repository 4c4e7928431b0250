#include <platform/thread_id.h>

#include <windows.h>

namespace platform {

std::uint32_t currentThreadId() {
    return GetCurrentThreadId();
}

}  // namespace platform
