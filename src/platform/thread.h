// Background threads that nobody has to wait for, and the number of the calling thread.
#pragma once

#include <cstdint>
#include <functional>
#include <future>
#include <memory>

namespace platform {

/// The number by which the system knows the calling thread (`GetCurrentThreadId`).
std::uint32_t currentThreadId();

/// Runs `task` on a new thread of its own; an exception that leaves `task` ends there. The module that holds this code
/// stays loaded until the thread has ended, whatever its host does meanwhile. Returns the thread's number, as
/// currentThreadId() gives it there. Throws std::system_error when no thread can be started. Any thread.
std::uint32_t runDetached(std::function<void()> task);

/// A background thread that can be asked whether it has ended. Dropping a worker leaves its thread to itself.
class Worker {
 public:
    /// Starts a thread that runs `task`; an exception that leaves `task` ends there. Throws std::system_error when no
    /// thread can be started.
    explicit Worker(std::function<void()> task);
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// True when the task has returned; join() then does not wait.
    bool ended() const;
    /// True on the worker's own thread.
    bool isCaller() const;
    /// Waits for the task. Throws std::system_error (resource_deadlock_would_occur) on the worker's own thread.
    void join() const;

 private:
    Worker(std::function<void()> task, const std::shared_ptr<std::promise<void>>& end);

    const std::future<void> end_;
    const std::uint32_t number_;
};

}  // namespace platform
