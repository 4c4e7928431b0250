// The host's session: the bracket of its C interface and the statuses of that, the displayed part, and how a part is
// named in log lines and messages. Host's thread only.
#pragma once

#include <uf.h>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>

#include <optional>
#include <string>
#include <unordered_map>

namespace NXOpen {
class BasePart;
}

namespace nx {

/// `UF_initialize` on construction and, when that succeeded, `UF_terminate` on destruction. Never throws.
class UfSession {
 public:
    UfSession() : status_(UF_initialize()) {}
    ~UfSession() {
        if (status_ == 0) UF_terminate();
    }
    UfSession(const UfSession&) = delete;
    UfSession& operator=(const UfSession&) = delete;

    /// True when the interface may be used.
    explicit operator bool() const { return status_ == 0; }
    /// What `UF_initialize` returned.
    int status() const { return status_; }

 private:
    int status_;
};

/// Logs "<operation> failed with NX status <status>." as a warning unless `status` is 0, and returns whether it is 0.
/// Also for destructors: never throws.
bool checkNxStatus(const char* operation, int status) noexcept;

/// The displayed part, or null when there is none, no session or no collection. Host exceptions pass.
inline NXOpen::BasePart* displayedPart() {
    NXOpen::Session* session = NXOpen::Session::GetSession();
    NXOpen::PartCollection* parts = session != nullptr ? session->Parts() : nullptr;
    return parts != nullptr ? parts->BaseDisplay() : nullptr;
}

/// What the host calls its parts, each text asked for once; one that the host failed to give is asked for again. For
/// one reading for display or one preparation of an upload, in which the texts do not change. UTF-8; host exceptions
/// pass.
class PartNames {
 public:
    const std::string& leaf(NXOpen::BasePart& part);
    const std::string& fullPath(NXOpen::BasePart& part);
    const std::string& uniqueIdentifier(NXOpen::BasePart& part);
    /// As partLogLabel().
    std::string logLabel(NXOpen::BasePart* part);

 private:
    struct Texts {
        std::optional<std::string> leaf;
        std::optional<std::string> fullPath;
        std::optional<std::string> uniqueIdentifier;
    };
    std::unordered_map<NXOpen::BasePart*, Texts> known_;
};

/// "<null part>" for null; the full path, a blank and the leaf name in parentheses; the one of the two that is not
/// empty; or "<unnamed NX part>". UTF-8. A name that the host fails to give counts as empty, so that the line that
/// names the part is still written. Never throws a host exception.
std::string partLogLabel(NXOpen::BasePart* part);

}  // namespace nx
