#include "scripted_sign_in.h"

#include "service/auth_session.h"

#include <gtest/gtest.h>
#include <chrono>
#include <future>
#include <stdexcept>
#include <system_error>
#include <thread>

using auth::AuthSession;
using auth::SignInStatus;
using test_support::ScriptedSignIn;

namespace {

TEST(AuthSession, greetsTheUserByTheBestNameThereIs) {
    const struct {
        const char *userName, *given, *family, *shown;
    } rows[] = {{"u", "Ada", "Byron", "Ada Byron"},
                {"u", "Ada", "", "Ada"},
                {"u", "", "Byron", "Byron"},
                {"u", "", "", "u"},
                {"", "", "", "e"}};
    for (const auto& row : rows) {
        AuthSession session;
        ScriptedSignIn flow;
        flow.client.currentUser = [&row](const std::string&) {
            cpp_piv::CppPivUser user;
            user.email = "e";
            user.userName = row.userName;
            user.givenName = row.given;
            user.familyName = row.family;
            return user;
        };
        flow.signIn(session);
        EXPECT_EQ(session.userDisplayName(), row.shown);
    }
}

TEST(AuthSession, aFailedSignOutSignsOutOnceTheServiceHasDoneSo) {
    AuthSession session;
    ScriptedSignIn flow;
    flow.signIn(session);
    flow.client.logout = []() -> std::string { throw std::runtime_error("offline"); };
    EXPECT_THROW(session.signOut(flow.client, flow.system), std::runtime_error);
    EXPECT_TRUE(session.isSignedIn());

    flow.client.logout = [] { return "https://bye/"; };
    flow.system.openBrowser = [](const std::string&) { throw std::runtime_error("no browser"); };
    EXPECT_THROW(session.signOut(flow.client, flow.system), std::runtime_error);
    EXPECT_FALSE(session.isSignedIn());
}

TEST(AuthSession, aFlowThatFailsLeavesItsMessage) {
    const std::system_error noThread(std::make_error_code(std::errc::resource_unavailable_try_again));
    const std::pair<std::function<void(ScriptedSignIn&)>, std::string> rows[] = {
        {[](auto& f) { f.client = {}, f.system = {}; }, "Browser open callback is not configured."},
        {[](auto& f) { f.client = {}, f.system.runInBackground = nullptr; },
         "Async runner callback is not configured."},
        {[](auto& f) { f.client = {}; }, "Authentication completion callback is not configured."},
        {[](auto& f) { f.client.authorize = nullptr; }, "Authentication authorize callback is not configured."},
        {[](auto& f) { f.client.authorize = []() -> std::string { throw std::runtime_error("offline"); }; }, "offline"},
        {[](auto& f) { f.system.openBrowser = [](auto&) { throw 1; }; },
         "Failed to start the Pivra authentication flow."},
        {[=](auto& f) { f.system.runInBackground = [=](auto) { throw noThread; }; }, noThread.what()},
        // From here on in the background.
        {[](auto& f) { f.client.complete = []() -> cpp_piv::CppPivLocalAuthTokens { throw 1; }; },
         "Unknown error while waiting for authentication to complete."},
        {[](auto& f) { f.client.currentUser = [](auto&) -> cpp_piv::CppPivUser { throw std::runtime_error("who"); }; },
         "who"},
    };
    for (const auto& [spoil, message] : rows) {
        SCOPED_TRACE(message);
        AuthSession session;
        ScriptedSignIn broken;
        spoil(broken);
        for (const bool messageIsTaken : {true, false}) {
            broken.background = nullptr;
            const auto status = broken.start(session).status;
            EXPECT_EQ(status, broken.background ? SignInStatus::started : SignInStatus::failed);
            if (broken.background) broken.background();
            EXPECT_FALSE(session.isSignedIn() || session.isInProgress());
            EXPECT_EQ(messageIsTaken ? session.takePendingMessage() : message, message);
        }
        ScriptedSignIn sound;
        EXPECT_EQ(sound.start(session).status, SignInStatus::started);
        EXPECT_EQ(session.takePendingMessage(), "") << "a new flow drops the message of the last";
    }
}

TEST(AuthSession, aSignOutDropsTheSignInThatIsUnderWay) {
    AuthSession session;
    ScriptedSignIn signIn;
    signIn.signIn(session);
    session.signOut({}, {});
    EXPECT_EQ(session.userEmail(), "");
    signIn.start(session);
    session.signOut({}, {});
    signIn.background();
    EXPECT_FALSE(session.isSignedIn() || session.isInProgress());
}

TEST(AuthSession, aWorkerDoesNotWaitForItself) {
    AuthSession session;
    for (const bool signsOut : {true, false}) {
        std::promise<void> placed, done;
        session.runInWorker([&] {
            placed.get_future().wait();
            signsOut ? session.signOut({}, {}) : session.startSignIn({}, {}).text;
            done.set_value();
        });
        placed.set_value();
        done.get_future().wait();
    }
    const auto deadlock = std::make_error_code(std::errc::resource_deadlock_would_occur);
    EXPECT_EQ(session.takePendingMessage(), std::system_error(deadlock).what());
    EXPECT_FALSE(session.isInProgress());
    bool ended = false;
    session.runInWorker([&ended] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        ended = true;
    });
    session.signOut({}, {});
    EXPECT_TRUE(ended) << "others do";
}

}  // namespace
