// The same session with real workers, whose browser waits until the test lets it go on.
#include <service/auth_session.h>
#include <service/system_browser.h>
#include <service/worker.h>

#include <gtest/gtest.h>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>

using auth::AuthSession;
using auth::SignInStatus;

namespace {

auth::AuthPlatformCallbacks withoutBrowser(AuthSession& session) {
    auto system = auth::systemCallbacks(session);
    system.openBrowser = [](const std::string&) {};
    return system;
}

/// One flow on a worker. Every copy of its callbacks holds `Ending`, so that the last one to go tells.
class HeldFlow {
 public:
    explicit HeldFlow(std::string token) : token_(std::move(token)) {}
    ~HeldFlow() { finish(); }

    auth::SignInStartResult start(AuthSession& session) {
        auto ending = std::make_shared<Ending>();
        ended_ = ending->promise.get_future();
        auth::AuthClientCallbacks client;
        client.authorize = [] { return "https://login/"; };
        client.complete = [this, ending = std::move(ending)] { return complete(); };
        return session.startSignIn(client, withoutBrowser(session));
    }
    void awaitWaiting() { waiting_.get_future().wait(); }
    /// Lets the browser answer and waits until nothing is left of the worker's task.
    void finish() {
        if (finished_) return;
        finished_ = true;
        answer_.set_value();
        if (ended_.valid()) ended_.wait();
    }

 private:
    struct Ending {
        std::promise<void> promise;
        ~Ending() { promise.set_value(); }
    };

    cpp_piv::CppPivLocalAuthTokens complete() {
        waiting_.set_value();
        answer_.get_future().wait();
        if (token_.empty()) throw std::runtime_error("late failure");
        return {token_, "", ""};
    }

    const std::string token_;
    std::promise<void> waiting_;
    std::promise<void> answer_;
    std::future<void> ended_;
    bool finished_ = false;
};

void awaitResult(const AuthSession& session) {
    while (session.isInProgress()) std::this_thread::yield();
}

TEST(SignInWorker, CommitsWhileTheSessionIsRead) {
    AuthSession session;
    HeldFlow flow("token");
    EXPECT_EQ(flow.start(session).status, SignInStatus::started);
    EXPECT_TRUE(session.isInProgress());
    auto reader = std::async(std::launch::async, [&session] {
        awaitResult(session);
        return session.accessToken() + session.userDisplayName() + session.takePendingMessage();
    });
    flow.finish();
    EXPECT_EQ(reader.get(), "token");
    EXPECT_EQ(session.signOut({}, {}), "");
    EXPECT_FALSE(session.isSignedIn());
}

TEST(SignInWorker, ASecondClickOvertakesTheFirstFlow) {
    for (const char* lateToken : {"late", ""}) {
        AuthSession session;
        HeldFlow late(lateToken), second("second");
        late.start(session);
        late.awaitWaiting();
        session.shutdown();
        EXPECT_EQ(second.start(session).status, SignInStatus::started);
        second.awaitWaiting();
        late.finish();
        EXPECT_TRUE(session.isInProgress());
        EXPECT_FALSE(session.isSignedIn());
        second.finish();
        awaitResult(session);
        EXPECT_EQ(session.accessToken(), "second");
        EXPECT_EQ(session.takePendingMessage(), "");
    }
}

TEST(SignInWorker, AFailedFlowIsJoinedByTheNext) {
    AuthSession session;
    HeldFlow failing(""), next("next");
    failing.start(session);
    failing.finish();
    awaitResult(session);
    EXPECT_EQ(session.takePendingMessage(), "late failure");
    next.start(session);
    next.finish();
    awaitResult(session);
    EXPECT_TRUE(session.isSignedIn());
}

TEST(SignInWorker, MayOutliveTheSession) {
    for (const char* token : {"token", ""}) {
        HeldFlow flow(token);
        {
            AuthSession session;
            flow.start(session);
            flow.awaitWaiting();
        }
        flow.finish();
    }
}

TEST(SignInWorker, StartsNoFlowFromItself) {
    AuthSession session;
    std::promise<void> placed;
    std::promise<SignInStatus> started;
    session.runInWorker([&] {
        placed.get_future().wait();
        started.set_value(session.startSignIn({}, {}).status);
    });
    placed.set_value();
    EXPECT_EQ(started.get_future().get(), SignInStatus::failed);
    const auto deadlock = std::make_error_code(std::errc::resource_deadlock_would_occur);
    EXPECT_EQ(session.takePendingMessage(), std::system_error(deadlock).what());
    EXPECT_FALSE(session.isInProgress());
}

TEST(SignInWorker, CanSignOutFromItself) {
    AuthSession session;
    std::promise<void> placed, signedOut;
    session.runInWorker([&] {
        placed.get_future().wait();
        session.signOut({}, {});
        signedOut.set_value();
    });
    placed.set_value();
    signedOut.get_future().wait();
}

TEST(SignInWorker, IsReplacedByALaterTaskWithoutWaiting) {
    AuthSession session;
    std::promise<void> release;
    std::promise<void> ended;
    session.runInWorker([&] {
        release.get_future().wait();
        ended.set_value();
    });
    session.runInWorker([] {});
    release.set_value();
    ended.get_future().wait();
}

TEST(Worker, KeepsExceptionsAndTellsWhenItHasEnded) {
    std::promise<void> release;
    auth::Worker worker([&release] {
        release.get_future().wait();
        throw std::runtime_error("nobody hears this");
    });
    EXPECT_FALSE(worker.ended());
    EXPECT_FALSE(worker.isCaller());
    release.set_value();
    worker.join();
    EXPECT_TRUE(worker.ended());
}

}  // namespace
