#include <platform/timer.h>
#include <platform/timer_system.h>

#include <utility>

namespace platform {

ThreadTimer::~ThreadTimer() {
    stop();
}

bool ThreadTimer::start(std::chrono::milliseconds interval, std::function<void()> onTick) {
    if (running()) return true;
    id_ = startSystemTimer(interval, [onTick = std::move(onTick)] {
        try {
            onTick();
        } catch (...) {
            // Documented end of the line: the system's dispatcher must not see it.
        }
    });
    return running();
}

void ThreadTimer::stop() noexcept {
    if (running()) stopSystemTimer(std::exchange(id_, 0));
}

}  // namespace platform
