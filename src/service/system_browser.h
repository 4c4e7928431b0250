// The user's browser: the one road from the plug-in to the shell.
#pragma once

#include "platform/desktop.h"
#include "service/auth_session.h"

#include <functional>
#include <string>
#include <string_view>

namespace auth {

/// The rule for what the shell is given: an http or https address in printable ASCII, without blanks and double quotes,
/// with which it could end the argument that the browser gets.
bool isWebAddress(std::string_view address);

/// What opens an address; its result is the shell's.
using Shell = std::function<int(const std::string&)>;

/// Opens `address` with `shell`. Host's thread. Throws std::runtime_error with the cause when it is no web address or
/// the shell fails.
void openInBrowser(const std::string& address, const Shell& shell = platform::shellOpen);

/// The same for signing in and out. Throws std::runtime_error with the text to show; the cause is nested in it.
void openSystemBrowser(const std::string& address, const Shell& shell = platform::shellOpen);

/// The system's browser, and workers of `session`, which must outlive the callbacks.
AuthPlatformCallbacks systemCallbacks(AuthSession& session);

}  // namespace auth
