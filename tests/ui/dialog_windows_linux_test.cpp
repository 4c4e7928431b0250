// Windows, timers and the shell as far as only the native event loop shows them.
#include "progress_fixture.h"

#include <devkit/gate.h>
#include <event_loop.h>
#include <ui/main_dialog.h>
#include <ui/progress_text.h>
#include <ui/start_dialog.h>

#include <gmock/gmock.h>
#include <map>
#include <stdexcept>
#include <vector>

namespace {

using namespace std::chrono_literals;
using devkit::EventLoop;
using test_support::OpenDialog;
using test_support::turnMessageLoop;
using testing::ElementsAre;
using testing::IsEmpty;

int frame = 0;  // the host's
int ownWindow = 0;
int otherWindow = 0;

ui::MainDialogActions actionsWithWorkspace() {
    ui::MainDialogActions actions;
    actions.readMetadata = [] { return std::make_shared<pivra::ModelMetadata>(); };
    actions.isDrawing = [] { return false; };
    actions.fixLegacyIdEnabled = [] { return true; };
    actions.userName = actions.userEmail = [] { return ""; };
    actions.loadWorkspaces = [] { return pivra::WorkspaceLoadResult{true, {cpp_piv::CppPivWorkspace{}}, ""}; };
    actions.signOut = [] {};
    actions.isSignedIn = [] { return false; };
    return actions;
}

TEST_F(ProgressDialog, OpensTheUploadedRevision) {
    std::vector<std::string> opened;
    int answer = 33;
    EventLoop::instance().setShell([&](const std::string& address) { return opened.push_back(address), answer; });
    host.user = [&](OpenDialog& dialog) {
        turnUntil([&] { return dialog.visible("actionGroup"); });
        dialog.press("openInPivraButton");
        EXPECT_THAT(host.boxes, IsEmpty());
        answer = 32;
        dialog.press("openInPivraButton");
    };
    show();
    EXPECT_THAT(opened, ElementsAre("https://pivra.example/m?revisionId=7", "https://pivra.example/m?revisionId=7"));
    EXPECT_THAT(host.boxes, ElementsAre(std::string("Pivra, error: ") + ui::openFailed));
    EventLoop::instance().setShell({});
}

TEST_F(ProgressDialog, ClosesItsOwnWindowAndNeverTheOneBefore) {
    auto& loop = EventLoop::instance();
    for (void* pressedIn : {&ownWindow, &frame}) {
        loop.setActiveWindow(&frame);
        host.user = [&](OpenDialog& dialog) {
            loop.setActiveWindow(pressedIn);
            dialog.press("uploadAnotherButton");
        };
        show();
        EXPECT_EQ(loop.takeClose(&ownWindow), pressedIn == &ownWindow);
        EXPECT_FALSE(loop.takeClose(&frame));
    }
    loop.setActiveWindow(&frame);
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

    host.user = [&](OpenDialog& dialog) {
        turnUntil([&] { return dialog.visible("actionGroup"); });
        EXPECT_FALSE(loop.hasTimers()) << "the end was seen";
    };
    show();
}

TEST_F(ProgressDialog, MayTickWhilePreparing) {
    request->prepare = [] { turnMessageLoop(900ms); };
    host.user = [&](OpenDialog& dialog) { turnUntil([&] { return dialog.visible("actionGroup"); }); };
    show();
    EXPECT_THAT(host.boxes, IsEmpty());
}

TEST_F(ProgressDialog, LetsNoFailureOfTheHostOut) {
    host.user = [&](OpenDialog& dialog) {
        turnMessageLoop(100ms);
        std::this_thread::sleep_for(1ms);
        turnMessageLoop(500ms);
        dialog.press("uploadAnotherButton");
    };
    show();
    for (const auto& [call, count] : std::map(devkit::Gate::instance().counts())) {
        // The first few calls fill the dialog, the last ones come from the timers.
        for (const std::size_t number : {std::size_t{0}, std::size_t{1}, count}) {
            devkit::Gate::instance().reset();
            devkit::Gate::instance().addFault({call, number, 1, "Fault."});
            show();
            EXPECT_THAT(devkit::Gate::instance().violations(), IsEmpty()) << call;
            EXPECT_FALSE(EventLoop::instance().hasTimers()) << call;
        }
    }
}

TEST(StartDialogWindow, ClosesItsOwnWindowWhateverTheSignInDoes) {
    const test_support::PluginFolder folder;
    test_support::ScriptedHost host;
    auto& loop = EventLoop::instance();
    host.user = [&](OpenDialog& dialog) {
        loop.setActiveWindow(&ownWindow);
        dialog.press("signInButton");
    };
    const struct {
        std::function<void()> signIn;
        std::vector<std::string> boxes;
    } cases[] = {{[] {}, {}},
                 {[] { throw std::runtime_error("No browser."); }, {"Pivra, error: No browser."}},
                 {[] { throw 1; }, {"Pivra, error: Failed to start the Pivra authentication flow."}}};
    for (const auto& c : cases) {
        host.boxes.clear();
        loop.setActiveWindow(&frame);
        ui::showStartDialog([&] {
            loop.setActiveWindow(&otherWindow);
            c.signIn();
        });
        EXPECT_EQ(host.boxes, c.boxes);
        EXPECT_TRUE(loop.takeClose(&ownWindow));
        EXPECT_FALSE(loop.takeClose(&otherWindow));
        EXPECT_FALSE(loop.takeClose(&frame));
    }
    loop.setActiveWindow(nullptr);
}

TEST(MainDialogWindow, ClosesWhenAnActionEndsIt) {
    const test_support::PluginFolder folder;
    test_support::ScriptedHost host;
    auto& loop = EventLoop::instance();
    auto actions = actionsWithWorkspace();
    const auto closesOn = [&](const char* button) {
        loop.setActiveWindow(&frame);
        host.user = [&, button](OpenDialog& dialog) {
            dialog.press(button);
            EXPECT_FALSE(loop.takeClose(&frame));
            loop.setActiveWindow(&ownWindow);
            dialog.press(button);
        };
        ui::showMainDialog(actions);
        return loop.takeClose(&ownWindow);
    };
    EXPECT_TRUE(closesOn("uploadButton"));
    EXPECT_TRUE(closesOn("signOutButton"));
    EXPECT_FALSE(closesOn("workspaceList"));

    actions.signOut = [] { throw 1; };
    EXPECT_TRUE(closesOn("signOutButton")) << "the user is signed out all the same";
    actions.isSignedIn = [] { return true; };
    EXPECT_FALSE(closesOn("signOutButton"));
    actions.loadWorkspaces = [] { return pivra::WorkspaceLoadResult{true, {}, ""}; };
    EXPECT_FALSE(closesOn("uploadButton"));
    loop.setActiveWindow(nullptr);
}

}  // namespace
