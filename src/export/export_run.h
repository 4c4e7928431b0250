// What the exports of one run share: how identifiers are resolved, the folder, and who has which file name in it.
#pragma once

#include "traceability/traceable_id.h"

#include <filesystem>
#include <string>
#include <unordered_map>
#include <utility>

namespace pivra {

/// One reading for display or one preparation of an upload. Host's thread only.
class ExportRun {
 public:
    /// `sessionKey` is the displayed part's identifier in `form`. It is resolved once a run, since resolving for upload
    /// may save that part.
    ExportRun(IdentifierForm form, std::string sessionKey) : form_(form), sessionKey_(std::move(sessionKey)) {}

    IdentifierForm form() const { return form_; }
    const std::string& sessionKey() const { return sessionKey_; }

    /// The folder of the run's session key. Throws as sessionTempDirectory().
    std::filesystem::path directory() const;

    /// Where a copy of the native file `source` (UTF-8) goes: the folder, under the file's own name. Another file of
    /// the same name goes into a numbered folder below, which is created. Throws as directory().
    std::filesystem::path placeFor(const std::string& source);

    /// The copy of `source` that this run has made; null when it made none.
    const std::filesystem::path* copyOf(const std::string& source) const;
    void rememberCopy(const std::string& source, const std::filesystem::path& copy) { copies_[source] = copy; }

 private:
    IdentifierForm form_;
    std::string sessionKey_;
    std::unordered_map<std::string, std::size_t> uses_;  // of a file name, letter case and letters beyond ASCII apart
    std::unordered_map<std::string, std::filesystem::path> copies_;
};

}  // namespace pivra
