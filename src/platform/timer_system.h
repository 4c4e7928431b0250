// What ThreadTimer asks of the system.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace platform {

/// Starts a repeating timer of the calling thread's message loop and returns its id, 0 when the system refuses. The
/// callable, which must not throw, lives at least until the call that is under way returns, whatever that call stops.
std::uintptr_t startSystemTimer(std::chrono::milliseconds interval, std::function<void()> onTick);

/// Stops the timer `id` and lets go of its callable. On the thread that started it.
void stopSystemTimer(std::uintptr_t id) noexcept;

}  // namespace platform
