#include "service/sign_in_flow.h"

#include "platform/error_text.h"

#include <stdexcept>
#include <utility>

namespace auth {
namespace {

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

}  // namespace

void runSignInFlow(const SignInFlow& flow, const AuthClientCallbacks& client) {
    if (!flow.isCurrent()) return;
    try {
        commit(flow, awaitBrowser(client));
    } catch (...) {
        std::string message = platform::currentErrorText("Unknown error while waiting for authentication to complete.");
        finish(flow, [&message](SessionSharedState& state) { state.pendingMessage = std::move(message); });
    }
}

}  // namespace auth
