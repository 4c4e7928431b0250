#include "traceability/traceable_id.h"

#include "config/properties.h"
#include "logging/log.h"
#include "nx/session.h"
#include "traceability/nx_uuid.h"
#include "traceability/pivra_id_attribute.h"

#include <NXOpen/BasePart.hxx>

#include <optional>
#include <string_view>
#include <utility>

namespace pivra {

namespace {

using logging::Log;
using logging::LogLevel;
using logging::LogWarning;
using logging::quoted;

/// What the resolution of an identifier reads from a part.
struct Identity {
    std::string label;
    std::string internalId;
    std::optional<std::string> pivraId;

    bool hasValidPivraId() const { return pivraId && isNxUuidFormat(*pivraId); }
    std::string_view pivraIdOrEmpty() const { return pivraId ? std::string_view(*pivraId) : std::string_view(); }
};

/// Logs the part and its internal identifier under the name `idName`.
void log(LogLevel level, const char* head, const Identity& identity, const char* idName) {
    Log(level, head, quoted("part", identity.label), quoted(idName, identity.internalId));
}

void logWithAttribute(LogLevel level, const char* head, const Identity& identity, const char* idName) {
    Log(level, head, quoted("part", identity.label), quoted(idName, identity.internalId),
        quoted("pivra_id", identity.pivraIdOrEmpty()));
}

bool isTopLevel(const NXOpen::BasePart& part) {
    return &part == nx::displayedPart();
}

void warnOfAttributeWithoutInternalId(const Identity& identity) {
    if (identity.pivraIdOrEmpty().empty()) return;
    logWithAttribute(LogLevel::warning, "Ignoring PIVRA_ID attribute because NX internal ID is not legacy:", identity,
                     "nx_id");
}

std::string displayIdOfLegacyPart(const Identity& identity) {
    if (identity.hasValidPivraId()) {
        logWithAttribute(LogLevel::info,
                         "Using existing PIVRA_ID for legacy NX internal ID while reading display traceable ID:",
                         identity, "legacy_id");
        return *identity.pivraId;
    }
    if (identity.pivraId && identity.pivraId->empty()) {
        log(LogLevel::warning, "Ignoring empty PIVRA_ID attribute while reading display traceable ID:", identity,
            "nx_id");
    } else if (identity.pivraId) {
        logWithAttribute(LogLevel::warning, "Ignoring invalid PIVRA_ID while reading display traceable ID:", identity,
                         "nx_id");
    }
    return identity.internalId;
}

std::string displayId(const Identity& identity) {
    if (identity.internalId.empty()) {
        warnOfAttributeWithoutInternalId(identity);
        return {};
    }
    if (!isNxUuidFormat(identity.internalId)) return displayIdOfLegacyPart(identity);
    if (identity.pivraId) {
        logWithAttribute(LogLevel::info,
                         "Using NX internal ID because it is UUID-style; PIVRA_ID attribute ignored:", identity,
                         "nx_id");
    }
    return identity.internalId;
}

void cleanUp(NXOpen::BasePart& part, const Identity& identity) {
    logWithAttribute(LogLevel::info,
                     "Using NX internal ID because it is UUID-style; PIVRA_ID attribute cleanup needed:", identity,
                     "nx_id");
    if (isTopLevel(part)) {
        removeRedundantId(part, {identity.label, identity.internalId, *identity.pivraId});
    } else {
        logWithAttribute(LogLevel::info, "Skipping PIVRA_ID cleanup for non-top-level NX part:", identity, "nx_id");
    }
}

std::string uploadIdOfLegacyMember(const Identity& identity) {
    if (!identity.pivraIdOrEmpty().empty()) {
        log(LogLevel::warning, "Ignoring invalid PIVRA_ID for non-top-level part:", identity, "legacy_id");
    }
    log(LogLevel::info, "Skipping PIVRA_ID repair for non-top-level legacy NX part:", identity, "legacy_id");
    return identity.internalId;
}

std::string uploadIdOfLegacyPart(NXOpen::BasePart& part, const Identity& identity) {
    if (identity.hasValidPivraId()) {
        logWithAttribute(LogLevel::info, "Using existing PIVRA_ID for legacy NX internal ID:", identity, "legacy_id");
        return *identity.pivraId;
    }
    if (identity.pivraId && identity.pivraId->empty()) {
        log(LogLevel::warning, "Ignoring empty PIVRA_ID attribute:", identity, "nx_id");
    }
    if (!isTopLevel(part)) return uploadIdOfLegacyMember(identity);
    if (!identity.pivraIdOrEmpty().empty()) {
        logWithAttribute(LogLevel::warning,
                         "Existing PIVRA_ID does not match NX UUID format and will be replaced:", identity,
                         "legacy_id");
    }
    if (fixLegacyIdEnabled()) return repairLegacyId(part, identity.label, identity.internalId);
    log(LogLevel::warning, "pivra_fix_legacy_id is false; legacy NX internal ID will not be fixed:", identity,
        "legacy_id");
    return identity.internalId;
}

std::string uploadId(NXOpen::BasePart& part, const Identity& identity) {
    if (identity.internalId.empty()) {
        warnOfAttributeWithoutInternalId(identity);
        return {};
    }
    if (!isNxUuidFormat(identity.internalId)) return uploadIdOfLegacyPart(part, identity);
    if (identity.pivraId) cleanUp(part, identity);
    return identity.internalId;
}

bool needsValidPivraId(const Identity& identity) {
    log(LogLevel::info, "Legacy NX internal ID detected:", identity, "legacy_id");
    if (identity.hasValidPivraId()) {
        logWithAttribute(LogLevel::info,
                         "Legacy NX internal ID already has valid PIVRA_ID; warning suppressed:", identity,
                         "legacy_id");
        return false;
    }
    if (identity.pivraId && identity.pivraId->empty()) {
        log(LogLevel::warning, "Ignoring empty PIVRA_ID attribute:", identity, "legacy_id");
    } else if (identity.pivraId) {
        LogWarning("Existing PIVRA_ID does not match NX UUID format:", quoted("part", identity.label),
                   quoted("legacy_id", identity.internalId), quoted("pivra_id", *identity.pivraId),
                   logging::remark("; replacement required"));
    }
    log(LogLevel::info, "Legacy NX internal ID requires PIVRA_ID:", identity, "legacy_id");
    return true;
}

void logSetting(const std::string& raw, bool enabled) {
    auto& lastLogged = traceabilityState().loggedSetting;
    const std::pair setting(raw, enabled);
    if (lastLogged == setting) return;
    lastLogged = setting;
    logging::LogInfo(std::string("pivra_fix_legacy_id is ") + (enabled ? "true" : "false") +
                     (raw.empty() ? " (default true)." : " (configured value: \"" + raw + "\")."));
}

void warnOf(const char* head, const std::string& label) {
    LogWarning(head, quoted("part", label));
}

}  // namespace

std::string resolveDisplayTraceableId(NXOpen::BasePart* part, nx::PartNames& names) {
    if (part == nullptr) return {};
    const std::string label = names.logLabel(part);
    try {
        return displayId({label, names.uniqueIdentifier(*part), readPivraId(*part)});
    } catch (...) {
        warnOf("Failed to read NX internal ID while resolving display traceable ID:", label);
        return {};
    }
}

std::string resolveTraceableId(NXOpen::BasePart* part, nx::PartNames& names) {
    if (part == nullptr) return {};
    const std::string label = names.logLabel(part);
    try {
        return uploadId(*part, {label, names.uniqueIdentifier(*part), readPivraId(*part)});
    } catch (...) {
        warnOf("Failed to read NX internal ID while resolving traceable ID:", label);
        return {};
    }
}

std::string traceableId(NXOpen::BasePart* part, IdentifierForm form, nx::PartNames& names) {
    return form == IdentifierForm::upload ? resolveTraceableId(part, names) : resolveDisplayTraceableId(part, names);
}

bool legacyIdWarningNeeded(NXOpen::BasePart* part, nx::PartNames& names) {
    if (part == nullptr) return false;
    try {
        const std::string internalId = names.uniqueIdentifier(*part);
        if (internalId.empty() || isNxUuidFormat(internalId)) return false;
        return needsValidPivraId({names.logLabel(part), internalId, readPivraId(*part)});
    } catch (...) {
        warnOf("Failed to inspect NX internal ID:", names.logLabel(part));
        return false;
    }
}

bool fixLegacyIdEnabled() {
    const std::string raw = config::GetProperty("pivra_fix_legacy_id");
    const bool enabled = config::ParseBooleanSetting("pivra_fix_legacy_id", raw, true);
    logSetting(raw, enabled);
    return enabled;
}

}  // namespace pivra
