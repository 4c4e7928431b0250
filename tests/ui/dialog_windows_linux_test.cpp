// Windows and timers as far as only the native event loop shows them.
#include "dialog_fixture.h"

#include <event_loop.h>
#include "ui/start_dialog.h"

#include <stdexcept>
#include <vector>

namespace {

using namespace std::chrono_literals;
using namespace ui_test;
using devkit::EventLoop;

int frame = 0;  // the host's
int ownWindow = 0;
int otherWindow = 0;

TEST_F(ProgressDialog, ClosesItsOwnWindowAndNeverTheOneBefore) {
    auto& loop = EventLoop::instance();
    loop.setActiveWindow(&frame);
    host.user = [&](OpenDialog& dialog) { dialog.press("uploadAnotherButton"); };
    EXPECT_TRUE(show());
    EXPECT_FALSE(loop.takeClose(&frame));
    host.user = [&](OpenDialog& dialog) {
        loop.setActiveWindow(&ownWindow);
        dialog.showAgain();
        loop.setActiveWindow(&otherWindow);
        dialog.press("uploadAnotherButton");
    };
    show();
    EXPECT_TRUE(loop.takeClose(&ownWindow)) << "it was remembered when the dialog was shown";
    EXPECT_FALSE(loop.takeClose(&otherWindow));
    loop.setActiveWindow(nullptr);
}

TEST_F(ProgressDialog, LeavesNoTimer) {
    auto& loop = EventLoop::instance();
    host.user = [&](OpenDialog&) { EXPECT_TRUE(loop.hasTimers()); };
    show();
    EXPECT_FALSE(loop.hasTimers());

    request->prepare = [] { turnMessageLoop(900ms); };  // the host may turn its loop meanwhile
    host.user = [&](OpenDialog& dialog) {
        turnUntil([&] { return dialog.visible("actionGroup"); });
        EXPECT_FALSE(loop.hasTimers()) << "the end was seen";
    };
    show();
    EXPECT_THAT(host.boxes, IsEmpty());
}

TEST_F(DialogTest, StartDialogClosesItsOwnWindowWhateverTheSignInDoes) {
    auto& loop = EventLoop::instance();
    host.user = [&](OpenDialog& dialog) {
        loop.setActiveWindow(&ownWindow);
        dialog.press("signInButton");
    };
    const std::pair<std::function<void()>, std::vector<std::string>> cases[] = {
        {[] {}, {}},
        {[] { throw std::runtime_error("No browser."); }, {"Pivra, error: No browser."}},
        {[] { throw 1; }, {"Pivra, error: Failed to start the Pivra authentication flow."}}};
    for (const auto& [signIn, boxes] : cases) {
        host.boxes.clear();
        loop.setActiveWindow(&frame);
        ui::showStartDialog([&, signIn = signIn] {
            loop.setActiveWindow(&otherWindow);
            signIn();
        });
        EXPECT_EQ(host.boxes, boxes);
        EXPECT_TRUE(loop.takeClose(&ownWindow));
        EXPECT_FALSE(loop.takeClose(&otherWindow));
        EXPECT_FALSE(loop.takeClose(&frame));
    }
    loop.setActiveWindow(nullptr);
}

}  // namespace
