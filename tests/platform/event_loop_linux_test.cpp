#include <event_loop.h>
#include <gmock/gmock.h>
#include <platform/shell.h>
#include <platform/window.h>

#include <vector>

namespace {

using devkit::EventLoop;
using std::chrono_literals::operator""ms;
using testing::ElementsAre;

TEST(EventLoop, runsTimersInOrderOfTime) {
    EventLoop loop;
    std::vector<std::pair<char, int>> ticks;
    const auto note = [&](char name) { return [&, name] { ticks.emplace_back(name, loop.now().count()); }; };
    const auto slow = loop.addTimer(50ms, note('s'));
    loop.addTimer(20ms, note('f'));
    loop.advance(60ms);
    EXPECT_THAT(ticks, ElementsAre(std::pair('f', 20), std::pair('f', 40), std::pair('s', 50), std::pair('f', 60)));
    EXPECT_EQ(loop.now(), 60ms);
    loop.removeTimer(slow);
    ticks.clear();
    loop.advance(41ms);
    EXPECT_THAT(ticks, ElementsAre(std::pair('f', 80), std::pair('f', 100)));
}

TEST(EventLoop, aTickMayTurnTheClockItself) {
    EventLoop loop;
    std::vector<int> ticks;
    bool modal = true;
    loop.addTimer(10ms, [&] {
        ticks.push_back(static_cast<int>(loop.now().count()));
        if (std::exchange(modal, false)) loop.advance(25ms);
    });
    loop.advance(12ms);
    EXPECT_THAT(ticks, ElementsAre(10, 20, 30));
    EXPECT_EQ(loop.now(), 35ms);
}

TEST(EventLoop, raisesTooShortIntervals) {
    EventLoop loop;
    int ticks = 0;
    loop.addTimer(0ms, [&] { ++ticks; });
    loop.advance(35ms);
    EXPECT_EQ(ticks, 3);
}

TEST(EventLoop, standsBehindWindowAndShell) {
    auto& loop = EventLoop::instance();
    int window = 0;
    EXPECT_EQ(platform::activeWindow(), nullptr);
    loop.setActiveWindow(&window);
    EXPECT_EQ(platform::activeWindow(), &window);
    platform::postClose(nullptr);
    EXPECT_FALSE(loop.takeClose(nullptr));
    platform::postClose(&window);
    EXPECT_TRUE(loop.takeClose(&window));
    EXPECT_FALSE(loop.takeClose(&window));
    loop.setActiveWindow(nullptr);

    EXPECT_GT(platform::shellOpen("https://pivra.example/"), platform::shellFailureLimit);
    std::string opened;
    loop.setShell([&](const std::string& address) {
        opened = address;
        return 31;
    });
    EXPECT_EQ(platform::shellOpen("https://pivra.example/?a=%20"), 31);
    EXPECT_EQ(opened, "https://pivra.example/?a=%20");
    loop.setShell(nullptr);
}

}  // namespace
