#include "service/auth_session.h"

#include "logging/log.h"
#include "platform/error_text.h"
#include "service/sign_in_flow.h"

#include <stdexcept>
#include <utility>

namespace auth {
namespace {

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
    std::uint64_t generation = 0;
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
    std::unique_ptr<Worker> worker;
    {
        const std::lock_guard lock(state_->mutex);
        nextGeneration();
        state_->inProgress = false;
        worker = std::move(worker_);
    }
    if (worker && worker->ended()) worker->join();
}

void AuthSession::runInWorker(std::function<void()> task) {
    auto worker = std::make_unique<Worker>(std::move(task));
    const std::lock_guard lock(state_->mutex);
    worker_.swap(worker);
}

std::unique_ptr<Worker> AuthSession::takeWorker() {
    const std::lock_guard lock(state_->mutex);
    return std::move(worker_);
}

std::uint64_t AuthSession::nextGeneration() {
    return state_->activeGeneration = ++*generation_;
}

}  // namespace auth
