// The half of a sign-in that runs in the background: waits for the browser and writes the result into the session,
// unless the session has gone on without it.
#pragma once

#include "service/auth_session.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace auth {

/// One flow's hold on the session, which it may outlive.
struct SignInFlow {
    std::shared_ptr<SessionSharedState> state;
    std::shared_ptr<const std::atomic<bool>> alive;            ///< the session still exists
    std::shared_ptr<const std::atomic<std::uint64_t>> newest;  ///< number of the newest flow or interruption
    std::uint64_t generation = 0;                              ///< this flow's own number

    /// True while nothing has overtaken this flow.
    bool isCurrent() const { return alive->load() && newest->load() == generation; }
};

/// Waits for the browser, fetches the user and commits both; a failure becomes the pending message. Writes nothing for
/// a flow that was overtaken. Worker thread; throws only when the session's mutex fails.
void runSignInFlow(const SignInFlow& flow, const AuthClientCallbacks& client);

/// What the user is told when a flow has nobody to wait for its completion.
inline constexpr const char* completionMissing = "Authentication completion callback is not configured.";

}  // namespace auth
