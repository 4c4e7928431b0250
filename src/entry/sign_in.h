// The sign-in button's action.
#pragma once

#include "service/auth_session.h"

#include <functional>

namespace entry {

/// Abandons a flow that is under way, starts a new one and tells the user; calls `openMainDialog` for a user who is
/// signed in already. Host's thread. Throws what escapes the start or the box.
void startSignIn(auth::AuthSession& session, const auth::AuthClientCallbacks& client,
                 const std::function<void()>& openMainDialog);

}  // namespace entry
