// The identifier under which the service knows a part.
//
// Newer parts carry a UUID of their own. Legacy parts carry another identifier; they get a generated UUID in the user
// attribute `PIVRA_ID` and are saved. A `PIVRA_ID` that a UUID-style part still carries is redundant and removed. Only
// the displayed part is ever written to, and only by resolveTraceableId().
//
// Host's thread only; no function here throws. `names` are those of the reading or preparation that asks.
#pragma once

#include <string>

namespace NXOpen {
class BasePart;
}
namespace nx {
class PartNames;
}

namespace pivra {

/// Which of the two resolutions serves a purpose: reading for the dialogs never writes to a part, preparing an upload
/// may repair the displayed one.
enum class IdentifierForm { display, upload };

/// The identifier for display: reads, never writes. Empty for a null part, for one without an internal identifier, and
/// when reading fails.
std::string resolveDisplayTraceableId(NXOpen::BasePart* part, nx::PartNames& names);

/// The identifier for upload: repairs or cleans up the displayed part and saves it. Empty when there is none, or when a
/// repair failed; traceabilityFailureMessage() then says so.
std::string resolveTraceableId(NXOpen::BasePart* part, nx::PartNames& names);

/// resolveDisplayTraceableId() or resolveTraceableId(), by `form`.
std::string traceableId(NXOpen::BasePart* part, IdentifierForm form, nx::PartNames& names);

/// True for a part with a legacy identifier and no valid `PIVRA_ID`.
bool legacyIdWarningNeeded(NXOpen::BasePart* part, nx::PartNames& names);

/// The setting `pivra_fix_legacy_id`, read afresh; logged when it changed since it was last logged.
bool fixLegacyIdEnabled();

}  // namespace pivra
