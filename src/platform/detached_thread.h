// A thread that nobody joins.
#pragma once

#include <functional>
#include <thread>

namespace platform {

/// Runs `task` on a new thread of its own; an exception that leaves `task` ends there. Returns the thread's id. Throws
/// std::system_error when no thread can be started. Any thread.
std::thread::id runDetached(std::function<void()> task);

}  // namespace platform
