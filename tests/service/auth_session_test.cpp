#include "scripted_sign_in.h"

#include <service/auth_session.h>

#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>
#include <system_error>

using auth::AuthSession;
using auth::SignInStatus;
using test_support::ScriptedSignIn;
using testing::ElementsAre;

namespace {

struct FailureWithoutText : std::exception {
    const char* what() const noexcept override { return ""; }
};

TEST(AuthSession, SignsInThroughTheBrowser) {
    AuthSession session;
    ScriptedSignIn flow;
    const auto started = flow.start(session);
    EXPECT_EQ(started.status, SignInStatus::started);
    EXPECT_EQ(started.text, "https://login/");
    EXPECT_TRUE(session.isInProgress());
    EXPECT_FALSE(session.isSignedIn());

    flow.background();
    EXPECT_FALSE(session.isInProgress());
    EXPECT_TRUE(session.isSignedIn());
    EXPECT_EQ(session.accessToken(), "token");
    EXPECT_EQ(session.userEmail(), "token@pivra.example");
    EXPECT_EQ(session.takePendingMessage(), "");
    EXPECT_THAT(flow.calls, ElementsAre("authorize https://login/", "open https://login/", "complete", "user token"));
}

TEST(AuthSession, StartsNothingWhileAFlowRunsOrAUserIsSignedIn) {
    AuthSession session;
    ScriptedSignIn first, second;
    first.start(session);
    EXPECT_EQ(second.start(session).status, SignInStatus::inProgress);
    first.background();
    const auto again = second.start(session);
    EXPECT_EQ(again.status, SignInStatus::alreadySignedIn);
    EXPECT_EQ(again.text, "");
    EXPECT_THAT(second.calls, ElementsAre());
}

TEST(AuthSession, SignsInWithoutAUser) {
    AuthSession session;
    ScriptedSignIn flow;
    flow.client.currentUser = nullptr;
    flow.signIn(session);
    EXPECT_TRUE(session.isSignedIn());
    EXPECT_EQ(session.userEmail(), "");
    EXPECT_EQ(session.userDisplayName(), "");
}

TEST(AuthSession, GreetsTheUserByTheBestNameThereIs) {
    struct Row {
        const char *email, *userName, *given, *family, *shown;
    };
    for (const Row& row :
         {Row{"e", "u", "Ada", "Byron", "Ada Byron"}, Row{"e", "u", "Ada", "", "Ada"},
          Row{"e", "u", "", "Byron", "Byron"}, Row{"e", "u", "", "", "u"}, Row{"e", "", "", "", "e"}}) {
        AuthSession session;
        ScriptedSignIn flow;
        flow.client.currentUser = [&row](const std::string&) {
            cpp_piv::CppPivUser user;
            user.email = row.email;
            user.userName = row.userName;
            user.givenName = row.given;
            user.familyName = row.family;
            return user;
        };
        flow.signIn(session);
        EXPECT_EQ(session.userDisplayName(), row.shown);
    }
}

struct FailureRow {
    std::function<void(ScriptedSignIn&)> spoil;
    std::string message;
};

TEST(AuthSession, AFlowThatCannotStartLeavesItsMessage) {
    const std::system_error noThread(std::make_error_code(std::errc::resource_unavailable_try_again));
    const FailureRow rows[] = {
        {[](auto& f) { f.client = {}, f.system = {}; }, "Browser open callback is not configured."},
        {[](auto& f) { f.client = {}, f.system.runInBackground = nullptr; },
         "Async runner callback is not configured."},
        {[](auto& f) { f.client = {}; }, "Authentication completion callback is not configured."},
        {[](auto& f) { f.client.authorize = nullptr; }, "Authentication authorize callback is not configured."},
        {[](auto& f) { f.client.authorize = [] { return ""; }; },
         "Pivra authentication did not return an authorization URL."},
        {[](auto& f) { f.client.authorize = []() -> std::string { throw std::runtime_error("offline"); }; }, "offline"},
        {[](auto& f) { f.system.openBrowser = [](auto&) { throw std::runtime_error("no browser"); }; }, "no browser"},
        {[](auto& f) { f.system.openBrowser = [](auto&) { throw 1; }; },
         "Failed to start the Pivra authentication flow."},
        {[](auto& f) { f.system.openBrowser = [](auto&) { throw FailureWithoutText(); }; },
         "Failed to start the Pivra authentication flow."},
        {[=](auto& f) { f.system.runInBackground = [=](auto) { throw noThread; }; }, noThread.what()},
    };
    for (const FailureRow& row : rows) {
        SCOPED_TRACE(row.message);
        AuthSession session;
        ScriptedSignIn spoilt, sound;
        row.spoil(spoilt);
        const auto started = spoilt.start(session);
        EXPECT_EQ(started.status, SignInStatus::failed);
        EXPECT_EQ(started.text, "");
        EXPECT_FALSE(session.isInProgress());
        EXPECT_EQ(session.takePendingMessage(), row.message);
        EXPECT_EQ(session.takePendingMessage(), "");
        EXPECT_EQ(sound.start(session).status, SignInStatus::started);
    }
}

TEST(AuthSession, AFlowThatRunsAlthoughItsStartFailedDropsTheMessage) {
    AuthSession session;
    ScriptedSignIn flow;
    flow.system.runInBackground = [&flow](std::function<void()> task) {
        flow.background = std::move(task);
        throw std::runtime_error("late trouble");
    };
    EXPECT_EQ(flow.start(session).status, SignInStatus::failed);
    flow.background();
    EXPECT_TRUE(session.isSignedIn());
    EXPECT_EQ(session.takePendingMessage(), "");
}

TEST(AuthSession, AFlowThatFailsInTheBackgroundLeavesItsMessage) {
    const FailureRow rows[] = {
        {[](auto& f) { f.client.complete = [] {
                           return cpp_piv::CppPivLocalAuthTokens{"", "refresh", "id"};
                       }; },
         "Authentication completed without an access token."},
        {[](auto& f) {
             f.client.complete = []() -> cpp_piv::CppPivLocalAuthTokens { throw std::runtime_error("no"); };
         },
         "no"},
        {[](auto& f) { f.client.complete = []() -> cpp_piv::CppPivLocalAuthTokens { throw 1; }; },
         "Unknown error while waiting for authentication to complete."},
        {[](auto& f) {
             f.client.currentUser = [](auto&) -> cpp_piv::CppPivUser { throw std::runtime_error("unknown user"); };
         },
         "unknown user"},
    };
    for (const FailureRow& row : rows) {
        SCOPED_TRACE(row.message);
        AuthSession session;
        ScriptedSignIn spoilt;
        row.spoil(spoilt);
        spoilt.signIn(session);
        EXPECT_FALSE(session.isSignedIn());
        EXPECT_FALSE(session.isInProgress());
        EXPECT_EQ(session.userEmail(), "");
        EXPECT_EQ(session.takePendingMessage(), row.message);

        spoilt.signIn(session);
        ScriptedSignIn().start(session);
        EXPECT_EQ(session.takePendingMessage(), "") << "a new flow drops the message of the last";
    }
}

TEST(AuthSession, SignsOutAndOpensTheAddressThatTheServiceNames) {
    AuthSession session;
    ScriptedSignIn flow;
    flow.signIn(session);
    flow.calls.clear();
    EXPECT_EQ(session.signOut(flow.client, flow.system), "https://bye/");
    EXPECT_THAT(flow.calls, ElementsAre("logout", "open https://bye/"));
    EXPECT_FALSE(session.isSignedIn());
    EXPECT_EQ(session.userEmail(), "");
    EXPECT_EQ(session.userDisplayName(), "");
    flow.signIn(session);
    EXPECT_TRUE(session.isSignedIn());
}

TEST(AuthSession, SignsOutWithoutAnAddressToOpen) {
    for (const bool hasLogout : {true, false}) {
        AuthSession session;
        ScriptedSignIn flow;
        flow.signIn(session);
        flow.calls.clear();
        flow.client.logout = nullptr;
        if (hasLogout) flow.client.logout = [] { return ""; };
        EXPECT_EQ(session.signOut(flow.client, flow.system), "");
        EXPECT_FALSE(session.isSignedIn());
        EXPECT_THAT(flow.calls, ElementsAre());
    }
}

TEST(AuthSession, SignsOutWithoutABrowserAndWhileIdle) {
    AuthSession session;
    ScriptedSignIn flow;
    flow.system.openBrowser = nullptr;
    flow.start(session);
    EXPECT_EQ(session.signOut(flow.client, flow.system), "https://bye/");
    EXPECT_EQ(session.takePendingMessage(), "");
    EXPECT_FALSE(session.isSignedIn());
}

TEST(AuthSession, ALogoutThatFailsLeavesTheUserSignedIn) {
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

// What can happen to a session while a flow waits for the browser.
struct Interruption {
    const char* name;
    std::function<void(std::unique_ptr<AuthSession>&, ScriptedSignIn& other)> act;
    bool running;  ///< the session has a flow afterwards
};

const Interruption interruptions[] = {
    {"shutdown", [](auto& session, auto&) { session->shutdown(); }, false},
    {"sign-out", [](auto& session, auto& other) { session->signOut(other.client, other.system); }, false},
    {"restart", [](auto& session, auto& other) { session->shutdown(), other.start(*session); }, true},
    {"end", [](auto& session, auto&) { session.reset(); }, false},
};

void expectUntouched(AuthSession* session, const Interruption& interruption, ScriptedSignIn& other) {
    if (!session) return;
    EXPECT_FALSE(session->isSignedIn());
    EXPECT_EQ(session->userEmail(), "");
    EXPECT_EQ(session->isInProgress(), interruption.running);
    EXPECT_EQ(session->takePendingMessage(), "");
    if (!interruption.running) return;
    other.background();
    EXPECT_EQ(session->accessToken(), "other");
}

TEST(AuthSession, AFlowThatWasOvertakenBeforeItWaitsAsksNobody) {
    for (const Interruption& interruption : interruptions) {
        SCOPED_TRACE(interruption.name);
        auto session = std::make_unique<AuthSession>();
        ScriptedSignIn late, other("other");
        late.start(*session);
        late.calls.clear();
        interruption.act(session, other);
        late.background();
        EXPECT_THAT(late.calls, ElementsAre());
        expectUntouched(session.get(), interruption, other);
    }
}

TEST(AuthSession, TheResultOfAFlowThatWasOvertakenWhileItWaitsIsDropped) {
    for (const Interruption& interruption : interruptions) {
        for (const bool fails : {false, true}) {
            SCOPED_TRACE(interruption.name);
            auto session = std::make_unique<AuthSession>();
            ScriptedSignIn late, other("other");
            late.client.complete = [&] {
                interruption.act(session, other);
                if (fails) throw std::runtime_error("late failure");
                return cpp_piv::CppPivLocalAuthTokens{"late", "", ""};
            };
            late.signIn(*session);
            expectUntouched(session.get(), interruption, other);
        }
    }
}

}  // namespace
