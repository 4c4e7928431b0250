#include "platform/thread.h"

#include "platform/windows_support.h"

#include <windows.h>

#include <memory>
#include <system_error>
#include <utility>

namespace platform {

namespace {

struct Start {
    std::function<void()> task;
    HMODULE module = nullptr;
};

// Not std::thread, which cannot release the module as its last step.
DWORD WINAPI runTask(void* argument) {
    std::unique_ptr<Start> start(static_cast<Start*>(argument));
    try {
        start->task();
    } catch (...) {
        // Nobody waits for this thread, so there is nobody to tell.
    }
    const HMODULE module = start->module;
    start.reset();
    FreeLibraryAndExitThread(module, 0);
}

}  // namespace

std::uint32_t runDetached(std::function<void()> task) {
    auto start = std::make_unique<Start>(Start{std::move(task), nullptr});
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const wchar_t*>(&runTask),
                            &start->module)) {
        throw std::system_error(lastError(), "thread");
    }
    DWORD number = 0;
    const HANDLE thread = CreateThread(nullptr, 0, runTask, start.get(), 0, &number);
    if (thread == nullptr) {
        const auto error = lastError();
        FreeLibrary(start->module);
        throw std::system_error(error, "thread");
    }
    static_cast<void>(start.release());
    CloseHandle(thread);
    return number;
}

std::uint32_t currentThreadId() {
    return GetCurrentThreadId();
}

}  // namespace platform
