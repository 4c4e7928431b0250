// A thread that nobody joins.
#pragma once

#include <cstdint>
#include <functional>

namespace platform {

/// Runs `task` on a new thread of its own; an exception that leaves `task` ends there. The module that holds this code
/// stays loaded until the thread has ended, whatever its host does meanwhile. Returns the thread's number, as
/// currentThreadId() gives it there. Throws std::system_error when no thread can be started. Any thread.
std::uint32_t runDetached(std::function<void()> task);

}  // namespace platform
