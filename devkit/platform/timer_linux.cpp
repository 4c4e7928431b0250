#include <platform/timer_system.h>

#include "event_loop.h"

namespace platform {

std::uintptr_t startSystemTimer(std::chrono::milliseconds interval, std::function<void()> onTick) {
    return devkit::EventLoop::instance().addTimer(interval, std::move(onTick));
}

void stopSystemTimer(std::uintptr_t id) noexcept {
    devkit::EventLoop::instance().removeTimer(id);
}

}  // namespace platform
