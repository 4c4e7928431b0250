#include "event_loop.h"

#include <algorithm>

namespace devkit {
namespace {

// Windows raises shorter intervals to this one.
constexpr std::chrono::milliseconds shortestInterval{10};

}  // namespace

EventLoop& EventLoop::instance() {
    static EventLoop loop;
    return loop;
}

std::uintptr_t EventLoop::addTimer(std::chrono::milliseconds interval, std::function<void()> onTick) {
    interval = std::max(interval, shortestInterval);
    const auto id = nextId_++;
    timers_[id] = {interval, now_ + interval, std::make_shared<std::function<void()>>(std::move(onTick))};
    return id;
}

void EventLoop::removeTimer(std::uintptr_t id) {
    timers_.erase(id);
}

EventLoop::Timer* EventLoop::nextDue(std::chrono::milliseconds end) {
    const auto next = std::min_element(timers_.begin(), timers_.end(),
                                       [](const auto& a, const auto& b) { return a.second.due < b.second.due; });
    return next != timers_.end() && next->second.due <= end ? &next->second : nullptr;
}

void EventLoop::advance(std::chrono::milliseconds span) {
    const auto end = now_ + span;
    while (auto* timer = nextDue(end)) {
        now_ = std::max(now_, timer->due);
        timer->due = now_ + timer->interval;
        // The tick may remove its own timer.
        const auto onTick = timer->onTick;
        (*onTick)();
    }
    now_ = std::max(now_, end);
}

}  // namespace devkit
