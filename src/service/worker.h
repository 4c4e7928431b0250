// A background thread that can be asked whether it has ended, and that nobody has to wait for.
#pragma once

#include "platform/detached_thread.h"
#include "platform/thread_id.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <system_error>
#include <utility>

namespace auth {

/// Dropping a worker leaves its thread to itself.
class Worker {
 public:
    /// Starts a thread that runs `task`; an exception that leaves `task` ends there. Throws std::system_error when no
    /// thread can be started.
    explicit Worker(std::function<void()> task)
        : number_(platform::runDetached([ended = ended_, task = std::move(task)] {
              try {
                  task();
              } catch (...) {
              }
              ended->store(true);
              ended->notify_all();
          })) {}
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// True when the task has returned; join() then does not wait.
    bool ended() const { return ended_->load(); }
    /// True on the worker's own thread.
    bool isCaller() const { return number_ == platform::currentThreadId(); }
    /// Waits for the task. Throws std::system_error (resource_deadlock_would_occur) on the worker's own thread.
    void join() const {
        if (isCaller()) throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
        ended_->wait(false);
    }

 private:
    const std::shared_ptr<std::atomic<bool>> ended_ = std::make_shared<std::atomic<bool>>(false);
    const std::uint32_t number_;
};

}  // namespace auth
