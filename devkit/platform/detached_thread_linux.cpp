#include <platform/detached_thread.h>
#include <platform/thread_id.h>

#include <dlfcn.h>

#include <future>
#include <thread>
#include <utility>

namespace platform {

std::uint32_t runDetached(std::function<void()> task) {
    // Here a module cannot be let go by its own code, so the caller's stays for good.
    Dl_info caller{};
    if (::dladdr(__builtin_return_address(0), &caller) != 0) {
        ::dlopen(caller.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
    }
    std::promise<std::uint32_t> number;
    auto started = number.get_future();
    std::thread([task = std::move(task), number = std::move(number)]() mutable {
        number.set_value(currentThreadId());
        try {
            task();
        } catch (...) {
            // Documented end of the line.
        }
    }).detach();
    return started.get();
}

}  // namespace platform
