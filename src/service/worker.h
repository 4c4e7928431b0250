// A background thread that can be asked whether it has ended, and that nobody has to wait for.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>

namespace auth {

class Worker {
 public:
    /// Starts a thread that runs `task`; an exception that leaves `task` ends there. Throws std::system_error when no
    /// thread can be started.
    explicit Worker(std::function<void()> task) {
        thread_ = std::thread([ended = ended_, task = std::move(task)] {
            try {
                task();
            } catch (...) {
            }
            ended->store(true);
        });
    }
    /// Leaves the thread to itself unless it was joined.
    ~Worker() {
        if (thread_.joinable()) thread_.detach();
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// True when the task has returned; join() then does not wait.
    bool ended() const { return ended_->load(); }
    /// True on the worker's own thread.
    bool isCaller() const { return thread_.get_id() == std::this_thread::get_id(); }
    /// Waits for the task. Throws std::system_error (resource_deadlock_would_occur) on the worker's own thread.
    void join() {
        // Asked here, since not every thread library leaves a thread whole that tried to join itself.
        if (isCaller()) throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
        thread_.join();
    }

 private:
    const std::shared_ptr<std::atomic<bool>> ended_ = std::make_shared<std::atomic<bool>>(false);
    std::thread thread_;
};

}  // namespace auth
