// What one run of the plug-in does, between the exported entry points and the dialogs. Host's thread only.
#pragma once

#include "service/auth_session.h"
#include "ui/main_dialog.h"
#include "ui/upload_progress_dialog.h"

#include <functional>
#include <memory>

namespace entry {

/// One run: applies the log settings, shows a pending sign-in message once, and opens the main dialog for a signed-in
/// user, otherwise the sign-in dialog. Throws what its steps throw.
void run();

/// The sign-in button: starts a browser flow, abandoning one that is under way, and tells the user; opens the main
/// dialog for a user who is signed in already. Throws what the start throws.
void signIn();

/// The same for `session` and `client`; a user who is signed in already gets `openMainDialog`.
void startSignIn(auth::AuthSession& session, const auth::AuthClientCallbacks& client,
                 const std::function<void()>& openMainDialog);

/// Main dialog and progress dialog in turn, until the user closes one of them. Throws what the preparation of the
/// temporary folders throws.
void launchMainDialog();

using ShowMainDialog = std::function<ui::MainDialogState()>;
using ShowProgressDialog = std::function<bool(const std::shared_ptr<ui::UploadProgressRequest>&)>;

/// The same over the given dialogs. The temporary folder of a round is gone when the round ends, also by an exception.
void alternateDialogs(const ShowMainDialog& showMainDialog, const ShowProgressDialog& showProgressDialog);

/// Ends what runs have left: the temporary folder, and a sign-in that still waits for the browser.
void cleanUp();

}  // namespace entry
