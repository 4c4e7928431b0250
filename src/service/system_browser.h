// The user's browser, for signing in and out.
#pragma once

#include "platform/shell.h"
#include "service/auth_session.h"

#include <functional>
#include <string>
#include <string_view>

namespace auth {

/// True for an http or https address: nothing else is handed to the shell.
bool isWebAddress(std::string_view address);

/// Opens `address` with `shell`. Host's thread. Throws std::runtime_error with the text to show when the shell fails
/// and when `address` is no web address.
void openSystemBrowser(const std::string& address,
                       const std::function<int(const std::string&)>& shell = platform::shellOpen);

/// The system's browser, and workers of `session`, which must outlive the callbacks.
AuthPlatformCallbacks systemCallbacks(AuthSession& session);

}  // namespace auth
