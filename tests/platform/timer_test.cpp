#include <gtest/gtest.h>
#include <platform/timer.h>
#include <support/message_loop.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace {

using platform::ThreadTimer;
using std::chrono_literals::operator""ms;
using test_support::turnMessageLoop;

TEST(ThreadTimer, ticksUntilItIsStopped) {
    ThreadTimer timer;
    int ticks = 0;
    EXPECT_FALSE(timer.running());
    EXPECT_TRUE(timer.start(20ms, [&] { ++ticks; }));
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

TEST(ThreadTimer, secondStartChangesNothing) {
    ThreadTimer timer;
    int first = 0;
    int second = 0;
    timer.start(20ms, [&] { ++first; });
    EXPECT_TRUE(timer.start(20ms, [&] { ++second; }));
    turnMessageLoop(60ms);
    EXPECT_GT(first, 0);
    EXPECT_EQ(second, 0);
}

TEST(ThreadTimer, canBeStartedAgainByItsOwnTick) {
    ThreadTimer timer;
    int later = 0;
    timer.start(10ms, [&] {
        timer.stop();
        timer.start(10ms, [&] { ++later; });
    });
    turnMessageLoop(80ms);
    EXPECT_GT(later, 1);
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

TEST(ThreadTimer, tickThatThrowsIsRepeated) {
    ThreadTimer timer;
    int ticks = 0;
    timer.start(10ms, [&] {
        ++ticks;
        throw std::runtime_error("out of the tick");
    });
    EXPECT_NO_THROW(turnMessageLoop(80ms));
    EXPECT_GT(ticks, 1);
}

}  // namespace
