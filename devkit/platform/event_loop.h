// The native build's stand-in for a Windows message loop: timers on a manual clock, the active window,
// posted close messages and the shell. One process has one; only the host's thread uses it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace devkit {

class EventLoop {
 public:
    static EventLoop& instance();

    /// Starts a repeating timer and returns its id, never 0. Intervals below 10 ms count as 10 ms.
    std::uintptr_t addTimer(std::chrono::milliseconds interval, std::function<void()> onTick);
    void removeTimer(std::uintptr_t id);
    bool hasTimers() const { return !timers_.empty(); }

    /// Advances the clock by `span` and runs every timer that becomes due, in order of time. A tick may add and remove
    /// timers, and may advance the clock itself (a modal box inside a tick).
    void advance(std::chrono::milliseconds span);
    /// The clock; starts at zero and moves only by advance().
    std::chrono::milliseconds now() const { return now_; }

    void setActiveWindow(void* window) { activeWindow_ = window; }
    void* activeWindow() const { return activeWindow_; }
    void postClose(void* window) { closes_.insert(window); }
    /// True once for each window that was asked to close.
    bool takeClose(void* window) { return closes_.erase(window) != 0; }

    /// Opens addresses; its result is the shell's (32 or less is a failure). Without one every address opens.
    void setShell(std::function<int(const std::string&)> shell) { shell_ = std::move(shell); }
    int shellOpen(const std::string& address) { return shell_ ? shell_(address) : 33; }

 private:
    struct Timer {
        std::chrono::milliseconds interval;
        std::chrono::milliseconds due;
        std::shared_ptr<std::function<void()>> onTick;
    };

    /// The timer that is due first, if it is due by `end`; the oldest of several.
    Timer* nextDue(std::chrono::milliseconds end);

    std::map<std::uintptr_t, Timer> timers_;
    std::uintptr_t nextId_ = 1;
    std::chrono::milliseconds now_{0};
    void* activeWindow_ = nullptr;
    std::set<void*> closes_;
    std::function<int(const std::string&)> shell_;
};

}  // namespace devkit
