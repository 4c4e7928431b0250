#include "entry/launch.h"

#include "config/log_settings.h"
#include "export/displayed_model_metadata.h"
#include "export/part_queries.h"
#include "export/session_temp_directories.h"
#include "export/upload_preparation.h"
#include "service/auth_session.h"
#include "service/service_client_provider.h"
#include "service/system_browser.h"
#include "traceability/traceable_id.h"
#include "ui/message_box.h"
#include "ui/start_dialog.h"

namespace entry {
namespace {

using Workspaces = std::vector<cpp_piv::CppPivWorkspace>;

ui::MainDialogActions mainDialogActions() {
    auto& session = auth::AuthSession::instance();
    ui::MainDialogActions actions;
    actions.readMetadata = pivra::readDisplayedModelMetadata;
    actions.isDrawing = pivra::isDrawingContext;
    actions.fixLegacyIdEnabled = pivra::fixLegacyIdEnabled;
    actions.userName = [&session] { return session.userDisplayName(); };
    actions.userEmail = [&session] { return session.userEmail(); };
    actions.loadWorkspaces = [&session] { return pivra::loadWorkspaces(session, pivra::workspaceServiceCallbacks()); };
    actions.lookupRevision = [&session](std::int64_t id, const Workspaces& workspaces,
                                        const pivra::ModelMetadata& metadata) {
        return pivra::lookupRevision(id, workspaces, session, metadata, pivra::workspaceServiceCallbacks());
    };
    actions.signOut = [&session] { session.signOut(pivra::authClientCallbacks(), auth::systemCallbacks(session)); };
    actions.isSignedIn = [&session] { return session.isSignedIn(); };
    return actions;
}

/// The upload that was accepted in `state`, whose workspace is set.
std::shared_ptr<ui::UploadProgressRequest> uploadRequest(const ui::MainDialogState& state) {
    auto& session = auth::AuthSession::instance();
    auto request = std::make_shared<ui::UploadProgressRequest>();
    request->metadata = state.metadata;
    request->workspace = state.selectedWorkspace.value();
    request->userEmail = session.userEmail();
    request->prepare = [metadata = state.metadata] { pivra::prepareUploadFiles(metadata); };
    request->executeUpload = [&session, id = request->workspace.id, workspaces = state.workspaces,
                              metadata = state.metadata] {
        return pivra::executeUpload(id, *workspaces, session, *metadata, pivra::workspaceServiceCallbacks());
    };
    return request;
}

/// Deletes the temporary folder at the end of a round of dialogs, also after an exception.
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
    return state.selectedWorkspace && showProgressDialog(uploadRequest(state));
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

void startSignIn(auth::AuthSession& session, const auth::AuthClientCallbacks& client,
                 const std::function<void()>& openMainDialog) {
    if (session.isInProgress()) session.shutdown();
    switch (session.startSignIn(client, auth::systemCallbacks(session)).status) {
        case auth::SignInStatus::started:
            return ui::ShowInfoMessage(
                "A browser window has been opened for Pivra sign-in. Complete authentication, then click the button "
                "again to open the dialog.");
        case auth::SignInStatus::alreadySignedIn:
            return openMainDialog();
        case auth::SignInStatus::inProgress:
            return ui::ShowInfoMessage(
                "Pivra authentication is already in progress. Finish signing in in the browser, then click the button "
                "again.");
        case auth::SignInStatus::failed:
            // The next run shows the pending message.
            return;
    }
}

void signIn() {
    startSignIn(auth::AuthSession::instance(), pivra::authClientCallbacks(), launchMainDialog);
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
    // Does not throw, so the session is always shut down.
    pivra::cleanupSessionTempDirectory();
    auth::AuthSession::instance().shutdown();
}

}  // namespace entry
