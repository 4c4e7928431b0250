#include <platform/timer_system.h>

#include <windows.h>

#include <map>
#include <memory>

namespace platform {
namespace {

using Ticks = std::map<UINT_PTR, std::shared_ptr<const std::function<void()>>>;

/// What the running timers call, by the system's id. One thread's: the host's.
Ticks& ticks() {
    static Ticks instance;
    return instance;
}

void CALLBACK onTimer(HWND, UINT, UINT_PTR id, DWORD) {
    const auto found = ticks().find(id);
    // A message that was already in the queue when its timer was stopped.
    if (found == ticks().end()) return;
    // The tick may stop its own timer.
    const auto onTick = found->second;
    (*onTick)();
}

}  // namespace

std::uintptr_t startSystemTimer(std::chrono::milliseconds interval, std::function<void()> onTick) {
    auto shared = std::make_shared<const std::function<void()>>(std::move(onTick));
    const UINT_PTR id = SetTimer(nullptr, 0, static_cast<UINT>(interval.count()), onTimer);
    if (id != 0) ticks()[id] = std::move(shared);
    return id;
}

void stopSystemTimer(std::uintptr_t id) noexcept {
    KillTimer(nullptr, id);
    ticks().erase(id);
}

}  // namespace platform
