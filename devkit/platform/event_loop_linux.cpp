#include "event_loop.h"
#include "injected_fault.h"
#include "platform/desktop.h"
#include "platform/timer.h"

#include <algorithm>
#include <utility>

namespace devkit {

EventLoop& EventLoop::instance() {
    static EventLoop loop;
    return loop;
}

std::uintptr_t EventLoop::addTimer(std::chrono::milliseconds interval, std::function<void()> onTick) {
    constexpr std::chrono::milliseconds shortest{10};  // Windows raises shorter intervals to it
    interval = std::max(interval, shortest);
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

namespace platform {

using devkit::EventLoop;
using devkit::injectedError;

int shellOpen(const std::string& address) {
    constexpr int accessDenied = 5;
    if (injectedError("platform::shellOpen", devkit::kinds::system)) return accessDenied;
    return EventLoop::instance().shellOpen(address);
}

WindowHandle activeWindow() {
    if (injectedError("platform::activeWindow", devkit::kinds::absent)) return nullptr;
    return EventLoop::instance().activeWindow();
}

void postClose(WindowHandle window) {
    if (window) EventLoop::instance().postClose(window);
}

bool ThreadTimer::start(std::chrono::milliseconds interval, std::function<void()> onTick) {
    if (running()) return true;
    if (injectedError("platform::startTimer", devkit::kinds::system)) return false;
    id_ = EventLoop::instance().addTimer(interval, std::move(onTick));
    return running();
}

void ThreadTimer::stop() noexcept {
    if (running()) EventLoop::instance().removeTimer(std::exchange(id_, 0));
}

}  // namespace platform
