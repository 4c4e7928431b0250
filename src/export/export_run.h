// What one reading for display, or one preparation of an upload, shares: answers of the host, the form of identifiers,
// the folder of the exports, and the names of the files in it.
#pragma once

#include "export/assembly_components.h"
#include "export/part_queries.h"
#include "nx/session.h"
#include "traceability/traceable_id.h"

#include <filesystem>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace pivra {

/// One reading for display or one preparation of an upload. Host's thread only.
class ExportRun {
 public:
    explicit ExportRun(IdentifierForm form, std::string sessionKey = {})
        : form_(form), sessionKey_(std::move(sessionKey)) {}

    /// The components below `part` (may be null), read from the host once a run.
    const AssemblyComponents& components(NXOpen::BasePart* part);

    /// As decodeManagedPartName(). The host is asked once a part, and again only when it could not answer.
    std::optional<ManagedPartName> managedName(NXOpen::BasePart* part);
    bool isManaged(NXOpen::BasePart* part) { return managedName(part).has_value(); }

    /// As fileOfComponent(), empty when the host could not answer. It is asked once a component, as for managedName().
    std::string fileOf(NXOpen::Assemblies::Component& component);

    /// As isDrawingContext(). The host is asked once, and again only when it could not answer.
    bool isDrawing();

    /// The texts of the parts.
    nx::PartNames& names() { return names_; }

    IdentifierForm form() const { return form_; }

    /// The displayed part's identifier in the run's form. It is resolved once a run, since resolving for upload may
    /// save that part.
    const std::string& sessionKey() const { return sessionKey_; }
    void setSessionKey(std::string sessionKey) {
        sessionKey_ = std::move(sessionKey);
        folder_.clear();
    }

    /// The folder of the session key. Throws as sessionTempDirectory().
    std::filesystem::path directory() const;

    /// Where a copy of the native file `source` (UTF-8) goes: the folder, which is asked for once a run, under the
    /// file's own name. Another file of the same name goes into a numbered folder below, which is created. Throws as
    /// directory().
    std::filesystem::path placeFor(const std::string& source);

    /// The copy of `source` that this run has made; null when it made none.
    const std::filesystem::path* copyOf(const std::string& source) const;
    void rememberCopy(const std::string& source, const std::filesystem::path& copy) { copies_[source] = copy; }

 private:
    IdentifierForm form_;
    std::string sessionKey_;
    std::filesystem::path folder_;  // of the copies; empty before the first
    nx::PartNames names_;
    std::optional<bool> isDrawing_;
    std::unordered_map<NXOpen::BasePart*, AssemblyComponents> components_;
    std::unordered_map<NXOpen::BasePart*, std::optional<ManagedPartName>> managedNames_;
    std::unordered_map<NXOpen::Assemblies::Component*, std::string> componentFiles_;
    std::unordered_map<std::string, std::size_t> uses_;  // of a file name, letter case and letters beyond ASCII apart
    std::unordered_map<std::string, std::filesystem::path> copies_;
};

}  // namespace pivra
