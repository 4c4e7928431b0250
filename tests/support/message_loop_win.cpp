#include "message_loop.h"

#include <windows.h>

namespace test_support {

void turnMessageLoop(std::chrono::milliseconds span) {
    const auto end = std::chrono::steady_clock::now() + span;
    for (auto now = std::chrono::steady_clock::now(); now < end; now = std::chrono::steady_clock::now()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - now);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(left.count()), QS_ALLINPUT);
        for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) DispatchMessageW(&message);
    }
}

}  // namespace test_support
