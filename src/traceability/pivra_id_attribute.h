// The user attribute `PIVRA_ID` of a part: reading it, and the two changes of it that are saved at once.
//
// Host's thread only; no function here throws a host exception.
#pragma once

#include <optional>
#include <string>

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

}  // namespace pivra
