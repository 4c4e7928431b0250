// The client of the Pivra service.
#pragma once

#include <cpp_piv/bridge.h>
#include <cpp_piv/logger.h>
#include <cpp_piv/records.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace cpp_piv {

struct CppPivInitializeOptions;

/// Thrown when an operation failed and the service gave no reason. Carries no text, hence no std::exception.
struct UnknownFailure {};

/// Operations of the service. Each blocks until the service has answered and throws std::runtime_error with the
/// service's message, or UnknownFailure, when it refuses. Any thread, several at once. When the client and its bridge
/// go while localAuthFlowComplete() waits on another thread, that wait ends with an error.
class CppPivClient {
 public:
    /// A client has a bridge of its own. `logger` may be null; it receives the library's log texts behind "[cpp-piv] ".
    CppPivClient(std::shared_ptr<CppPivBridgeInterface> bridge, std::shared_ptr<ICppPivLogger> logger);

    void initialize(const CppPivInitializeOptions& options);

    /// Begins a sign-in in the browser and returns the address to open there.
    std::string localAuthFlowAuthorize();
    /// Waits until the sign-in begun last has ended in the browser.
    CppPivLocalAuthTokens localAuthFlowComplete();
    CppPivUser getCurrentUser(const std::string& accessToken) const;
    /// Signs out and returns an address to open, or nothing.
    std::string localAuthFlowLogout();

    std::vector<CppPivWorkspace> listWorkspaces(const std::string& accessToken, const std::string& filter) const;
    std::vector<CppPivFindRevisionResult> findRevision(const std::string& accessToken, std::int64_t workspaceId,
                                                       const std::string& fileId, const std::string& sourceVersion,
                                                       const std::string& revision, const std::string& fileName,
                                                       bool includeDeleted, bool latestOnly, bool isAssembly,
                                                       bool exactMatch) const;
    CppPivDirectory getRootDirectory(const std::string& accessToken, std::int64_t workspaceId) const;
    CppPivUploadResult upload(const std::string& accessToken, const CppPivUploadPayload& payload, bool replace) const;

 private:
    std::shared_ptr<CppPivBridgeInterface> bridge_;
    std::shared_ptr<ICppPivLogger> logger_;
};

}  // namespace cpp_piv
