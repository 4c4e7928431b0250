// The one client of the service, and its operations as replaceable callables.
#pragma once

#include "service/auth_session.h"
#include "service/workspaces.h"

#include <cpp_piv/client.h>

#include <memory>
#include <string>

namespace pivra {

/// Name and version by which the client library presents this plug-in to the service; the dialogs show the version,
/// too.
inline constexpr const char* clientName = "nx-integration";
inline constexpr const char* clientVersion = PIVRA_VERSION;

/// Holds the process's client: created and initialised at the first call, after the log settings were applied, and
/// released at process exit. Any thread; concurrent first callers wait for one creation.
class ServiceClientProvider {
 public:
    static ServiceClientProvider& instance();

    /// The client. Throws whatever its creation throws; the next call then tries again.
    std::shared_ptr<cpp_piv::CppPivClient> client();

 private:
    ServiceClientProvider() = default;
};

/// Full name of the native service library beside the plug-in, in the process's file-system code page. Throws as
/// platform::moduleDirectory() and platform::fileSystemTextFromPath() do.
std::string nativeLibraryPath();

/// Where the client library logs: into the plug-in's log, or nowhere (null) when logging is off.
std::shared_ptr<cpp_piv::ICppPivLogger> makeClientLogger();

/// Options for the client, from the log settings and the service environment as they stand. Without logging they name
/// neither log file nor level.
cpp_piv::CppPivInitializeOptions makeInitializeOptions();

/// The client's operations for sign-in and for workspaces. Each obtains the client when it is called, keeps it for the
/// call, passes its arguments on unchanged and catches nothing. Any thread.
auth::AuthClientCallbacks authClientCallbacks();
WorkspaceServiceCallbacks workspaceServiceCallbacks();

}  // namespace pivra
