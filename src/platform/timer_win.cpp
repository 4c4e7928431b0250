#include "platform/timer.h"

#include <windows.h>

#include <map>
#include <memory>
#include <utility>

namespace platform {
namespace {

using Ticks = std::map<UINT_PTR, std::shared_ptr<const std::function<void()>>>;

/// The callables of the running timers, by the system's id. Host's thread only.
Ticks& ticks() {
    static Ticks instance;
    return instance;
}

void CALLBACK onTimer(HWND, UINT, UINT_PTR id, DWORD) {
    const auto found = ticks().find(id);
    // The message was already queued when its timer was stopped.
    if (found == ticks().end()) return;
    // The tick may stop its own timer.
    const auto onTick = found->second;
    (*onTick)();
}

}  // namespace

bool ThreadTimer::start(std::chrono::milliseconds interval, std::function<void()> onTick) {
    if (running()) return true;
    auto shared = std::make_shared<const std::function<void()>>(std::move(onTick));
    id_ = SetTimer(nullptr, 0, static_cast<UINT>(interval.count()), onTimer);
    if (running()) ticks()[id_] = std::move(shared);
    return running();
}

void ThreadTimer::stop() noexcept {
    if (!running()) return;
    KillTimer(nullptr, id_);
    ticks().erase(std::exchange(id_, 0));
}

}  // namespace platform
