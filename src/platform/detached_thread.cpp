#include "platform/detached_thread.h"

#include <future>
#include <utility>

namespace platform {

// The task begins when its thread has been let go: with MinGW's threads, one that ends while it is being detached
// damages the next one.
std::thread::id runDetached(std::function<void()> task) {
    std::promise<void> detached;
    std::thread thread([task = std::move(task), begin = detached.get_future()] {
        try {
            begin.wait();
            task();
        } catch (...) {
        }
    });
    const auto id = thread.get_id();
    thread.detach();
    detached.set_value();
    return id;
}

}  // namespace platform
