// A background thread that can be asked whether it has ended, and that nobody has to wait for.
#pragma once

#include "platform/detached_thread.h"
#include "platform/thread_id.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <system_error>
#include <utility>

namespace auth {

/// Dropping a worker leaves its thread to itself.
class Worker {
 public:
    /// Starts a thread that runs `task`; an exception that leaves `task` ends there. Throws std::system_error when no
    /// thread can be started.
    explicit Worker(std::function<void()> task) : Worker(std::move(task), std::make_shared<std::promise<void>>()) {}
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// True when the task has returned; join() then does not wait.
    bool ended() const { return end_.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }
    /// True on the worker's own thread.
    bool isCaller() const { return number_ == platform::currentThreadId(); }
    /// Waits for the task. Throws std::system_error (resource_deadlock_would_occur) on the worker's own thread.
    void join() const {
        if (isCaller()) throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
        end_.wait();
    }

 private:
    // A future and no std::atomic::wait(), which misses its wake-up now and then in MinGW's library.
    Worker(std::function<void()> task, const std::shared_ptr<std::promise<void>>& end)
        : end_(end->get_future()), number_(platform::runDetached([end, task = std::move(task)] {
              try {
                  task();
              } catch (...) {
              }
              end->set_value();
          })) {}

    const std::future<void> end_;
    const std::uint32_t number_;
};

}  // namespace auth
