#include "platform/timer.h"
#include <gtest/gtest.h>
#include <support/message_loop.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

using platform::ThreadTimer;
using std::chrono_literals::operator""ms;
using test_support::turnMessageLoop;

TEST(ThreadTimer, ticksUntilItIsStopped) {
    ThreadTimer timer;
    int ticks = 0;
    EXPECT_FALSE(timer.running());
    EXPECT_TRUE(timer.start(20ms, [&] { ++ticks; }));
    EXPECT_TRUE(timer.start(20ms, [] { ADD_FAILURE() << "started twice"; }));
    EXPECT_TRUE(timer.running());
    turnMessageLoop(110ms);
    EXPECT_GE(ticks, 2);
    EXPECT_LE(ticks, 6);
    timer.stop();
    EXPECT_FALSE(timer.running());
    const int before = ticks;
    turnMessageLoop(60ms);
    EXPECT_EQ(ticks, before);
}

TEST(ThreadTimer, mayBeDestroyedByItsOwnTick) {
    int ticks = 0;
    auto timer = std::make_unique<ThreadTimer>();
    const auto held = std::make_shared<int>(7);
    timer->start(10ms, [&, held] {
        timer.reset();
        ticks += *held;  // what the callable holds is still there
    });
    turnMessageLoop(60ms);
    EXPECT_EQ(ticks, 7);
    EXPECT_EQ(held.use_count(), 1);
}

#ifdef _WIN32
TEST(ThreadTimer, aTickAlreadyInTheQueueFindsNothingAfterTheStop) {
    ThreadTimer timer;
    timer.start(10ms, [] { ADD_FAILURE() << "ticked after its end"; });
    MSG message{};
    ASSERT_TRUE(GetMessageW(&message, nullptr, WM_TIMER, WM_TIMER));
    timer.stop();
    DispatchMessageW(&message);
    turnMessageLoop(30ms);
}
#endif

}  // namespace
