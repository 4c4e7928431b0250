#include <gtest/gtest.h>
#include <platform/timer.h>
#include <support/message_loop.h>

#include <windows.h>

namespace {

TEST(ThreadTimerMessages, aTickAlreadyInTheQueueFindsNothingAfterTheStop) {
    using std::chrono_literals::operator""ms;
    platform::ThreadTimer timer;
    timer.start(10ms, [] { ADD_FAILURE() << "ticked after its end"; });
    MSG message{};
    ASSERT_TRUE(GetMessageW(&message, nullptr, WM_TIMER, WM_TIMER));
    timer.stop();
    DispatchMessageW(&message);
    test_support::turnMessageLoop(30ms);
}

}  // namespace
