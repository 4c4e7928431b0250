#include "platform/thread.h"

#include <chrono>
#include <system_error>
#include <utility>

namespace platform {
namespace {

/// Signals the end of a task, also when an exception ends it.
struct EndSignal {
    ~EndSignal() { end.set_value(); }
    std::promise<void>& end;
};

}  // namespace

Worker::Worker(std::function<void()> task) : Worker(std::move(task), std::make_shared<std::promise<void>>()) {}

// A future, because std::atomic::wait() sometimes misses its wake-up with MinGW.
Worker::Worker(std::function<void()> task, const std::shared_ptr<std::promise<void>>& end)
    : end_(end->get_future()), number_(runDetached([end, task = std::move(task)] {
          const EndSignal atEnd{*end};
          task();
      })) {}

bool Worker::ended() const {
    return end_.wait_for(std::chrono::seconds::zero()) == std::future_status::ready;
}

bool Worker::isCaller() const {
    return number_ == currentThreadId();
}

void Worker::join() const {
    if (isCaller()) throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
    end_.wait();
}

}  // namespace platform
