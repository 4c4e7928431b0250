// The same session with real workers, whose browser waits until the test lets it go on.
#include "platform/thread.h"
#include "service/auth_session.h"
#include "service/system_browser.h"

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

/// One flow on a worker. Every copy of its callbacks holds `Ending`, so that the last one to go tells.
class HeldFlow {
 public:
    /// Without a token the flow fails.
    explicit HeldFlow(std::string token) : token_(std::move(token)) {}
    ~HeldFlow() { finish(); }

    /// Starts the flow and waits until it waits for the browser.
    void start(AuthSession& session) {
        auto ending = std::make_shared<Ending>();
        ended_ = ending->promise.get_future();
        auth::AuthClientCallbacks client;
        client.authorize = [] { return "https://login/"; };
        client.complete = [this, ending = std::move(ending)] { return complete(); };
        auto system = auth::systemCallbacks(session);
        system.openBrowser = [](const std::string&) {};
        ASSERT_EQ(session.startSignIn(client, system).status, SignInStatus::started);
        waiting_.get_future().wait();
    }
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

TEST(SignInWorker, CommitsWhileTheSessionIsRead) {
    AuthSession session;
    HeldFlow failing(""), flow("token");
    failing.start(session);
    failing.finish();
    EXPECT_EQ(session.takePendingMessage(), "late failure");
    flow.start(session);
    auto reader = std::async(std::launch::async, [&session] {
        while (session.isInProgress()) std::this_thread::yield();
        return session.accessToken() + session.userDisplayName() + session.takePendingMessage();
    });
    flow.finish();
    EXPECT_EQ(reader.get(), "token");
    EXPECT_EQ(session.signOut({}, {}), "");
    EXPECT_FALSE(session.isSignedIn());
}

TEST(SignInWorker, MayOutliveTheSession) {
    for (const char* token : {"token", ""}) {
        HeldFlow flow(token);
        auto session = std::make_unique<AuthSession>();
        flow.start(*session);
        session.reset();
        flow.finish();
    }
}

/// Runs `task` on a worker of `session` that knows itself as such.
template <typename Task>
auto inWorkerOf(AuthSession& session, Task task) {
    std::promise<void> placed;
    std::promise<decltype(task())> done;
    session.runInWorker([&] {
        placed.get_future().wait();
        done.set_value(task());
    });
    placed.set_value();
    return done.get_future().get();
}

TEST(SignInWorker, DoesNotWaitForItself) {
    AuthSession session;
    EXPECT_EQ(inWorkerOf(session, [&] { return session.startSignIn({}, {}).status; }), SignInStatus::failed);
    const auto deadlock = std::make_error_code(std::errc::resource_deadlock_would_occur);
    EXPECT_EQ(session.takePendingMessage(), std::system_error(deadlock).what());
    EXPECT_FALSE(session.isInProgress());
    EXPECT_EQ(inWorkerOf(session, [&] { return session.signOut({}, {}); }), "");
}

TEST(SignInWorker, KeepsExceptionsAndTellsWhenItHasEnded) {
    std::promise<void> release;
    const platform::Worker worker([&release] {
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
