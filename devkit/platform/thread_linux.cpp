#include "injected_fault.h"
#include "platform/thread.h"

#include <dlfcn.h>
#include <unistd.h>

#include <future>
#include <thread>
#include <utility>

namespace platform {

std::uint32_t currentThreadId() {
    return static_cast<std::uint32_t>(::gettid());
}

std::uint32_t runDetached(std::function<void()> task) {
    const auto fault = devkit::injectedError("platform::runDetached", devkit::kinds::system);
    if (fault) throw std::system_error(fault, "thread");
    // A module cannot unload itself here, so the caller's stays loaded for good.
    Dl_info caller{};
    if (::dladdr(__builtin_return_address(0), &caller) != 0)
        ::dlopen(caller.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
    std::promise<std::uint32_t> number;
    auto started = number.get_future();
    std::thread([task = std::move(task), number = std::move(number)]() mutable {
        number.set_value(currentThreadId());
        try {
            task();
        } catch (...) {
            // Exceptions of the task end here, as the header says.
        }
    }).detach();
    return started.get();
}

}  // namespace platform
