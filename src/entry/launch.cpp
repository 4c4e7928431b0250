#include "entry/launch.h"

#include "config/log_settings.h"
#include "entry/dialog_wiring.h"
#include "entry/sign_in.h"
#include "export/session_temp_directories.h"
#include "service/auth_session.h"
#include "service/service_client_provider.h"
#include "ui/message_box.h"
#include "ui/start_dialog.h"

namespace entry {
namespace {

/// The temporary folder of one round of dialogs: gone on every way out.
struct TempDirectoryScope {
    TempDirectoryScope() = default;
    ~TempDirectoryScope() { pivra::cleanupSessionTempDirectory(); }
    TempDirectoryScope(const TempDirectoryScope&) = delete;
    TempDirectoryScope& operator=(const TempDirectoryScope&) = delete;
};

/// One round; true when another one is asked for.
bool showDialogs(const ShowMainDialog& showMainDialog, const ShowProgressDialog& showProgressDialog) {
    const TempDirectoryScope tempDirectory;
    const auto state = showMainDialog();
    return state.selectedWorkspaceId && showProgressDialog(uploadRequest(state));
}

}  // namespace

void run() {
    config::ApplyLogSettings();
    auto& session = auth::AuthSession::instance();
    const auto pendingMessage = session.takePendingMessage();
    if (!pendingMessage.empty()) ui::ShowErrorMessage(pendingMessage);
    if (session.isSignedIn()) {
        launchMainDialog();
    } else {
        ui::showStartDialog(signIn);
    }
}

void signIn() {
    startSignIn(auth::AuthSession::instance(), service::authClientCallbacks(), launchMainDialog);
}

void launchMainDialog() {
    alternateDialogs([] { return ui::showMainDialog(mainDialogActions()); }, ui::showUploadProgressDialog);
}

void alternateDialogs(const ShowMainDialog& showMainDialog, const ShowProgressDialog& showProgressDialog) {
    pivra::cleanupStaleSessionTempDirectories();
    while (showDialogs(showMainDialog, showProgressDialog)) {
    }
}

void cleanUp() {
    // Never throws, so that the session is shut down in any case.
    pivra::cleanupSessionTempDirectory();
    auth::AuthSession::instance().shutdown();
}

}  // namespace entry
