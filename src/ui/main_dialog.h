// The main dialog: what would be uploaded, and where to.
#pragma once

#include "export/model_metadata.h"
#include "service/workspaces.h"

#include <cpp_piv/records.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ui {

/// What the main dialog asks of the rest of the plug-in. All are called on the host's thread and may wait.
struct MainDialogActions {
    std::function<std::shared_ptr<pivra::ModelMetadata>()> readMetadata;
    std::function<bool()> isDrawing;
    std::function<bool()> fixLegacyIdEnabled;
    std::function<std::string()> userName;
    std::function<std::string()> userEmail;
    std::function<pivra::WorkspaceLoadResult()> loadWorkspaces;
    std::function<pivra::RevisionLookupResult(std::int64_t workspaceId,
                                              const std::vector<cpp_piv::CppPivWorkspace>& workspaces,
                                              const pivra::ModelMetadata& metadata)>
        lookupRevision;
    std::function<void()> signOut;  ///< throws when it failed; the user may be signed in or out then
    std::function<bool()> isSignedIn;
};

/// What the dialog learned and decided; the entry reads it after the dialog has closed.
struct MainDialogState {
    std::shared_ptr<pivra::ModelMetadata> metadata;                           ///< never null
    std::shared_ptr<const std::vector<cpp_piv::CppPivWorkspace>> workspaces;  ///< in display order; never null
    std::optional<cpp_piv::CppPivWorkspace> selectedWorkspace;                ///< set when an upload was accepted
};

/// Shows "pivraGui.dlx" modally and returns when it has closed. Host's thread. A dialog that cannot be created or shown
/// is reported in a box. Throws nothing.
MainDialogState showMainDialog(const MainDialogActions& actions) noexcept;

}  // namespace ui
