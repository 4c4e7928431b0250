// Timers of the calling thread's message loop.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace platform {

/// A repeating timer without a window (`SetTimer` with no window and id 0), delivered by the message loop of the thread
/// that started it, which is the host's. Stopped on destruction; a tick that is already under way then finds nothing to
/// call. Not to be shared between threads.
class ThreadTimer {
 public:
    ThreadTimer() = default;
    ~ThreadTimer() { stop(); }
    ThreadTimer(const ThreadTimer&) = delete;
    ThreadTimer& operator=(const ThreadTimer&) = delete;

    /// Starts the timer when it is not running, and otherwise does nothing. `onTick` may stop or destroy the timer; it
    /// must not throw, since the system calls it. Returns whether the timer runs.
    bool start(std::chrono::milliseconds interval, std::function<void()> onTick);
    void stop() noexcept;
    bool running() const noexcept { return id_ != 0; }

 private:
    std::uintptr_t id_ = 0;
};

}  // namespace platform
