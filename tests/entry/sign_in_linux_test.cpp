// The sign-in button with the real browser call, which the native event loop answers.
#include "launch_fixture.h"

#include <entry/launch.h>
#include <entry/sign_in.h>
#include <event_loop.h>

#include <gmock/gmock.h>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* browserOpened =
    "Pivra, information: A browser window has been opened for Pivra sign-in. Complete authentication, then click the "
    "button again to open the dialog.";

class SignIn : public Launch {
 protected:
    SignIn() {
        devkit::EventLoop::instance().setShell([this](const std::string& address) {
            opened.push_back(address);
            return shellResult;
        });
        client.authorize = [] { return "https://login/"; };
        client.complete = [] { return cpp_piv::CppPivLocalAuthTokens{"second", "", ""}; };
    }
    ~SignIn() override { devkit::EventLoop::instance().setShell({}); }

    void press() {
        entry::startSignIn(session, client, [this] { ++mainDialogs; });
    }

    auth::AuthClientCallbacks client;
    std::vector<std::string> opened;
    int shellResult = 33;
    int mainDialogs = 0;
};

TEST_F(SignIn, OpensTheBrowserAndThenTheMainDialog) {
    press();
    EXPECT_THAT(opened, ElementsAre("https://login/"));
    EXPECT_THAT(host.boxes, ElementsAre(browserOpened));
    while (session.isInProgress()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    press();
    EXPECT_EQ(mainDialogs, 1);
    EXPECT_EQ(opened.size() + host.boxes.size(), 2U) << "nothing more was opened or shown";
}

TEST_F(SignIn, AbandonsTheFlowBefore) {
    scripted.start(session);
    ASSERT_TRUE(session.isInProgress());
    press();
    scripted.background();
    while (session.isInProgress()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_EQ(session.accessToken(), "second") << "the first flow's late result";
    EXPECT_THAT(host.boxes, ElementsAre(browserOpened));
}

TEST_F(SignIn, LeavesAFailureToTheNextRun) {
    shellResult = 32;
    press();
    EXPECT_THAT(host.boxes, IsEmpty());
    entry::run();
    EXPECT_THAT(host.boxes, ElementsAre("Pivra, error: Failed to launch the system browser for Pivra authentication."));
}

TEST_F(SignIn, ShowsWhatTheServiceLibraryFailsWith) {
    host.user = [](test_support::OpenDialog& dialog) { dialog.press("signInButton"); };
    entry::run();
    EXPECT_THAT(host.boxes, IsEmpty());
    EXPECT_NE(session.takePendingMessage(), "") << "no service library here";
    EXPECT_THAT(opened, IsEmpty());
}

}  // namespace
