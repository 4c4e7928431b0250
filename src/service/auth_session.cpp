#include "service/auth_session.h"

#include "logging/log.h"
#include "platform/error_text.h"

#include <stdexcept>
#include <utility>

namespace auth {
namespace {

constexpr const char* completionMissing = "Authentication completion callback is not configured.";

/// One sign-in flow's reference to the session, which the flow may outlive.
struct SignInFlow {
    std::shared_ptr<SessionSharedState> state;
    std::shared_ptr<const std::atomic<bool>> alive;            ///< the session still exists
    std::shared_ptr<const std::atomic<std::uint64_t>> newest;  ///< number of the newest flow or interruption
    std::uint64_t generation{};                                ///< this flow's own number

    /// True until a newer flow, a sign-out or the shutdown has overtaken this one.
    bool isCurrent() const { return alive->load() && newest->load() == generation; }
};

struct SignInOutcome {
    cpp_piv::CppPivLocalAuthTokens tokens;
    std::optional<cpp_piv::CppPivUser> user;
};

SignInOutcome awaitBrowser(const AuthClientCallbacks& client) {
    if (!client.complete) throw std::runtime_error(completionMissing);
    SignInOutcome outcome{client.complete(), std::nullopt};
    if (outcome.tokens.accessToken.empty()) {
        throw std::runtime_error("Authentication completed without an access token.");
    }
    if (client.currentUser) outcome.user = client.currentUser(outcome.tokens.accessToken);
    return outcome;
}

/// Ends the flow in the session with `write`, unless the flow was overtaken.
template <typename Write>
void finish(const SignInFlow& flow, Write write) {
    const std::lock_guard lock(flow.state->mutex);
    if (!flow.isCurrent() || flow.state->activeGeneration != flow.generation) return;
    write(*flow.state);
    flow.state->inProgress = false;
}

void commit(const SignInFlow& flow, SignInOutcome outcome) {
    finish(flow, [&outcome](SessionSharedState& state) {
        state.tokens = std::move(outcome.tokens);
        state.user = std::move(outcome.user);
        state.pendingMessage.clear();
    });
}

/// Waits for the browser, fetches the user and commits both; a failure becomes the pending message. Writes nothing for
/// a flow that was overtaken. Worker thread; throws only when the session's mutex fails.
void runSignInFlow(const SignInFlow& flow, const AuthClientCallbacks& client) {
    if (!flow.isCurrent()) return;
    try {
        commit(flow, awaitBrowser(client));
    } catch (...) {
        std::string message = platform::currentErrorText("Unknown error while waiting for authentication to complete.");
        finish(flow, [&message](SessionSharedState& state) { state.pendingMessage = std::move(message); });
    }
}

void checkCallbacks(const AuthClientCallbacks& client, const AuthPlatformCallbacks& system) {
    if (!system.openBrowser) throw std::runtime_error("Browser open callback is not configured.");
    if (!system.runInBackground) throw std::runtime_error("Async runner callback is not configured.");
    if (!client.complete) throw std::runtime_error(completionMissing);
    if (!client.authorize) throw std::runtime_error("Authentication authorize callback is not configured.");
}

std::string authorizationAddress(const AuthClientCallbacks& client) {
    std::string address = client.authorize();
    if (address.empty()) throw std::runtime_error("Pivra authentication did not return an authorization URL.");
    return address;
}

std::string displayName(const cpp_piv::CppPivUser& user) {
    if (user.givenName.empty() && user.familyName.empty()) return user.userName.empty() ? user.email : user.userName;
    const char* gap = user.givenName.empty() || user.familyName.empty() ? "" : " ";
    return user.givenName + gap + user.familyName;
}

}  // namespace

AuthSession::~AuthSession() {
    alive_->store(false);
    shutdown();
}

AuthSession& AuthSession::instance() {
    static AuthSession session;
    return session;
}

bool AuthSession::isSignedIn() const {
    const std::lock_guard lock(state_->mutex);
    return !state_->tokens.accessToken.empty();
}

bool AuthSession::isInProgress() const {
    const std::lock_guard lock(state_->mutex);
    return state_->inProgress;
}

std::string AuthSession::takePendingMessage() {
    const std::lock_guard lock(state_->mutex);
    return std::exchange(state_->pendingMessage, {});
}

std::string AuthSession::accessToken() const {
    const std::lock_guard lock(state_->mutex);
    return state_->tokens.accessToken;
}

std::string AuthSession::userEmail() const {
    const std::lock_guard lock(state_->mutex);
    return state_->user ? state_->user->email : std::string();
}

std::string AuthSession::userDisplayName() const {
    const std::lock_guard lock(state_->mutex);
    return state_->user ? displayName(*state_->user) : std::string();
}

SignInStartResult AuthSession::startSignIn(const AuthClientCallbacks& client, const AuthPlatformCallbacks& system) {
    std::uint64_t generation{};
    {
        const std::lock_guard lock(state_->mutex);
        if (!state_->tokens.accessToken.empty()) return {SignInStatus::alreadySignedIn, {}};
        if (state_->inProgress) return {SignInStatus::inProgress, {}};
        generation = nextGeneration();
        state_->inProgress = true;
        state_->pendingMessage.clear();
    }
    try {
        return {SignInStatus::started, beginFlow(client, system, generation)};
    } catch (...) {
        constexpr const char* noDetails = "Failed to start the Pivra authentication flow.";
        std::string message = platform::currentErrorText(noDetails);
        logging::LogError("Sign-in could not be started: " + platform::currentErrorChain(noDetails));
        const std::lock_guard lock(state_->mutex);
        state_->pendingMessage = std::move(message);
        state_->inProgress = false;
        return {SignInStatus::failed, {}};
    }
}

std::string AuthSession::beginFlow(const AuthClientCallbacks& client, const AuthPlatformCallbacks& system,
                                   std::uint64_t generation) {
    if (const auto previous = takeWorker()) previous->join();
    checkCallbacks(client, system);
    std::string address = authorizationAddress(client);
    system.openBrowser(address);
    system.runInBackground(
        [flow = SignInFlow{state_, alive_, generation_, generation}, client] { runSignInFlow(flow, client); });
    return address;
}

std::string AuthSession::signOut(const AuthClientCallbacks& client, const AuthPlatformCallbacks& system) {
    std::string address = client.logout ? client.logout() : std::string();
    if (const auto worker = takeWorker(); worker && !worker->isCaller()) worker->join();
    {
        const std::lock_guard lock(state_->mutex);
        nextGeneration();
        state_->tokens = {};
        state_->user.reset();
        state_->pendingMessage.clear();
        state_->inProgress = false;
    }
    if (!address.empty() && system.openBrowser) system.openBrowser(address);
    return address;
}

void AuthSession::shutdown() {
    std::unique_ptr<platform::Worker> worker;
    {
        const std::lock_guard lock(state_->mutex);
        nextGeneration();
        state_->inProgress = false;
        worker = std::move(worker_);
    }
    if (worker && worker->ended()) worker->join();
}

void AuthSession::runInWorker(std::function<void()> task) {
    auto worker = std::make_unique<platform::Worker>(std::move(task));
    const std::lock_guard lock(state_->mutex);
    worker_.swap(worker);
}

std::unique_ptr<platform::Worker> AuthSession::takeWorker() {
    const std::lock_guard lock(state_->mutex);
    return std::move(worker_);
}

std::uint64_t AuthSession::nextGeneration() {
    return state_->activeGeneration = ++*generation_;
}

}  // namespace auth
