#include <platform/thread_id.h>

#include <unistd.h>

namespace platform {

std::uint32_t currentThreadId() {
    return static_cast<std::uint32_t>(::gettid());
}

}  // namespace platform
