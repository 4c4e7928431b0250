#include "entry/dialog_wiring.h"

#include "export/displayed_model_metadata.h"
#include "export/part_queries.h"
#include "export/upload_preparation.h"
#include "service/service_client_provider.h"
#include "service/system_browser.h"
#include "traceability/traceable_id.h"

namespace entry {
namespace {

using Workspaces = std::vector<cpp_piv::CppPivWorkspace>;

std::string nameOf(const Workspaces& workspaces, std::int64_t id) {
    const auto workspace = pivra::findWorkspaceById(workspaces, id);
    return workspace ? pivra::workspaceLabel(workspace->name) : "";
}

}  // namespace

ui::MainDialogActions mainDialogActions() {
    auto& session = auth::AuthSession::instance();
    ui::MainDialogActions actions;
    actions.readMetadata = pivra::readDisplayedModelMetadata;
    actions.isDrawing = pivra::isDrawingContext;
    actions.fixLegacyIdEnabled = pivra::fixLegacyIdEnabled;
    actions.userName = [&session] { return session.userDisplayName(); };
    actions.userEmail = [&session] { return session.userEmail(); };
    actions.loadWorkspaces = [&session] {
        return pivra::loadWorkspaces(session, service::workspaceServiceCallbacks());
    };
    actions.lookupRevision = [&session](std::int64_t id, const Workspaces& workspaces,
                                        const pivra::ModelMetadata& metadata) {
        return pivra::lookupRevision(id, workspaces, session, metadata, service::workspaceServiceCallbacks());
    };
    actions.signOut = [&session] { session.signOut(service::authClientCallbacks(), auth::systemCallbacks(session)); };
    actions.isSignedIn = [&session] { return session.isSignedIn(); };
    return actions;
}

std::shared_ptr<ui::UploadProgressRequest> uploadRequest(const ui::MainDialogState& state) {
    auto& session = auth::AuthSession::instance();
    auto request = std::make_shared<ui::UploadProgressRequest>();
    request->metadata = state.metadata;
    request->workspaces = state.workspaces;
    request->workspaceId = state.selectedWorkspaceId.value();
    request->workspaceName = nameOf(*state.workspaces, request->workspaceId);
    request->userEmail = session.userEmail();
    request->prepare = [metadata = state.metadata] { pivra::prepareUploadFiles(metadata); };
    request->executeUpload = [&session, id = request->workspaceId, workspaces = state.workspaces,
                              metadata = state.metadata] {
        return pivra::executeUpload(id, *workspaces, session, *metadata, service::workspaceServiceCallbacks());
    };
    return request;
}

}  // namespace entry
