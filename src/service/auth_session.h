// Sign-in through the system browser, and the process-wide session that it fills.
//
// The host's thread starts a flow and goes on; one worker waits for the browser and commits the result, unless a
// sign-out, a restart or the shutdown has overtaken it: each flow has a generation number, and only the current one may
// write. Every member of the shared state is read and written under its mutex; no thread is joined with it held.
#pragma once

#include "platform/thread.h"

#include <cpp_piv/records.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace auth {

/// What a session needs of the service; any may be missing, and is then reported with a sentence of its own.
struct AuthClientCallbacks {
    std::function<std::string()> authorize;                                             ///< authorization address
    std::function<cpp_piv::CppPivLocalAuthTokens()> complete;                           ///< blocks for the browser
    std::function<std::optional<cpp_piv::CppPivUser>(const std::string&)> currentUser;  ///< takes the access token
    std::function<std::string()> logout;                                                ///< address to open, or empty
};

/// What a session needs of the system.
struct AuthPlatformCallbacks {
    std::function<void(const std::string&)> openBrowser;         ///< throws when no browser can be opened
    std::function<void(std::function<void()>)> runInBackground;  ///< leaves the thread in the session's worker slot
};

/// The part of the session that a worker may outlive. `mutex` guards every other member.
struct SessionSharedState {
    std::mutex mutex;
    cpp_piv::CppPivLocalAuthTokens tokens;  ///< a non-empty access token means signed in
    std::optional<cpp_piv::CppPivUser> user;
    std::string pendingMessage;
    bool inProgress = false;
    std::uint64_t activeGeneration = 0;
};

/// How starting a flow ended.
enum class SignInStatus { started = 0, alreadySignedIn = 1, inProgress = 2, failed = 3 };

struct SignInStartResult {
    SignInStatus status = SignInStatus::failed;
    std::string text;  ///< the authorization address when started, otherwise empty
};

/// The sign-in session. Any thread may read it; starting, signing out and shutting down are the host's thread's.
class AuthSession {
 public:
    AuthSession() = default;
    /// Drops the worker as shutdown() does.
    ~AuthSession();
    AuthSession(const AuthSession&) = delete;
    AuthSession& operator=(const AuthSession&) = delete;

    /// The process's session, created at the first call.
    static AuthSession& instance();

    bool isSignedIn() const;
    bool isInProgress() const;
    /// Returns the pending message and leaves it empty.
    std::string takePendingMessage();
    std::string accessToken() const;
    /// The user's first text member; empty while no user is known.
    std::string userEmail() const;
    /// Given and family name; without them the second text member, or the first; empty while no user is known.
    std::string userDisplayName() const;

    /// Starts a browser flow and returns without waiting for it; waits for the worker of an earlier one. A failure to
    /// start leaves a pending message and gives `failed`.
    SignInStartResult startSignIn(const AuthClientCallbacks& client, const AuthPlatformCallbacks& system);

    /// Signs out of the service, then waits for a worker, empties the session and opens the address that the service
    /// named. Returns that address, or nothing. Throws what the callbacks throw: after a logout that throws the user is
    /// still signed in, after a browser that does not open the user is signed out.
    std::string signOut(const AuthClientCallbacks& client, const AuthPlatformCallbacks& system);

    /// Abandons a running flow: its late result is dropped. Waits for no worker that still runs.
    void shutdown();

    /// Runs `task` on a new thread and keeps that thread in the worker slot: the usual `runInBackground`. Throws
    /// std::system_error when no thread can be started.
    void runInWorker(std::function<void()> task);

 private:
    std::string beginFlow(const AuthClientCallbacks& client, const AuthPlatformCallbacks& system,
                          std::uint64_t generation);
    std::unique_ptr<platform::Worker> takeWorker();
    /// Makes every earlier flow a late one and returns the new number. Only with the mutex held.
    std::uint64_t nextGeneration();

    const std::shared_ptr<SessionSharedState> state_ = std::make_shared<SessionSharedState>();
    const std::shared_ptr<std::atomic<bool>> alive_ = std::make_shared<std::atomic<bool>>(true);
    const std::shared_ptr<std::atomic<std::uint64_t>> generation_ = std::make_shared<std::atomic<std::uint64_t>>(0);
    std::unique_ptr<platform::Worker> worker_;  ///< guarded by the state's mutex
};

}  // namespace auth
