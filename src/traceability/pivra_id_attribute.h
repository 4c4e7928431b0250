// The user attribute `PIVRA_ID` of a part: reading it, the two changes of it that are saved at once, and what those
// left for the upload to know.
//
// Host's thread only; no function here throws a host exception.
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace NXOpen {
class BasePart;
}

namespace pivra {

/// What the log lines of a change name.
struct TraceabilityRecord {
    std::string part;        ///< the part's label
    std::string internalId;  ///< the host's own identifier
    std::string pivraId;     ///< value of the attribute
};

/// The attribute without blanks at its ends; absent when the part has none or it cannot be read.
std::optional<std::string> readPivraId(NXOpen::BasePart& part);

/// Writes a generated identifier to the legacy part and saves it. Returns the identifier and notes that a part was
/// saved. A failed save leaves the attribute empty in the session; then, and when it cannot be written, the result is
/// empty and traceabilityFailureMessage() says why.
std::string repairLegacyId(NXOpen::BasePart& part, const std::string& label, const std::string& legacyId);

/// Deletes the attribute and saves the part, noting that a part was saved. A failed save brings the old value back in
/// the session. A failure is logged and nothing more.
void removeRedundantId(NXOpen::BasePart& part, const TraceabilityRecord& record);

/// What identifiers leave behind in the process.
struct TraceabilityState {
    std::string failureMessage;
    bool savedPart = false;
    std::optional<std::pair<std::string, bool>> loggedSetting;  ///< `pivra_fix_legacy_id` as it was last logged
};
TraceabilityState& traceabilityState();

/// Why an upload must stop: the first repair that failed since the message was cleared; empty when none did.
std::string traceabilityFailureMessage();
void clearTraceabilityFailureMessage();

/// Whether a part was saved after its attribute was written or deleted, since the flag was last cleared.
bool traceabilitySavedPart();
void clearTraceabilitySavedPart();

}  // namespace pivra
