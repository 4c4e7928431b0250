#include "traceability/pivra_id_attribute.h"

#include "logging/log.h"
#include "nx/text.h"
#include "platform/text.h"
#include "traceability/nx_uuid.h"

#include <NXOpen/BasePart.hxx>
#include <NXOpen/PartSaveStatus.hxx>

#include <functional>
#include <memory>

namespace pivra {

namespace {

using logging::quoted;
using NXOpen::NXObject;
using NXOpen::Update;

constexpr const char* attributeTitle = "PIVRA_ID";
constexpr int noArrayIndex = -1;

/// Logs lines about a record, with its internal identifier under the name `idName`.
struct RecordLog {
    const TraceabilityRecord& record;
    const char* idName;

    void info(const char* head) const { log(logging::LogLevel::info, head); }
    void warning(const char* head) const { log(logging::LogLevel::warning, head); }
    void log(logging::LogLevel level, const char* head) const {
        logging::Log(level, head, quoted("part", record.part), quoted(idName, record.internalId),
                     quoted("pivra_id", record.pivraId));
    }
};

void writeAttribute(NXOpen::BasePart& part, const std::string& value) {
    part.SetUserAttribute(nx::toHost(attributeTitle), noArrayIndex, nx::toHost(value), Update::OptionNow);
}

void deleteAttribute(NXOpen::BasePart& part) {
    constexpr bool entireArray = true;
    part.DeleteUserAttribute(NXObject::AttributeTypeString, nx::toHost(attributeTitle), entireArray, Update::OptionNow);
}

bool savedCompletely(NXOpen::BasePart& part) {
    const std::unique_ptr<NXOpen::PartSaveStatus> status(
        part.Save(NXOpen::BasePart::SaveComponentsFalse, NXOpen::BasePart::CloseAfterSaveFalse));
    return status == nullptr || (status->NumberUnsavedParts() == 0 && status->NumberUnsavedObjects() == 0);
}

/// Runs one call of the host, and logs a line that begins with `failure` when it throws.
bool attempt(const std::function<bool()>& call, const RecordLog& log, const char* failure) {
    try {
        return call();
    } catch (...) {
        log.warning(failure);
        return false;
    }
}

bool attemptWrite(NXOpen::BasePart& part, const std::string& value, const RecordLog& log, const char* failure) {
    return attempt([&] { return writeAttribute(part, value), true; }, log, failure);
}

void recordFailure(const TraceabilityRecord& record) {
    std::string& message = traceabilityState().failureMessage;
    if (!message.empty()) return;
    message = "Legacy file(s) detected. Unable to upload because PIVRA_ID could not be saved for " + record.part + ".";
    logging::LogWarning(message, quoted("legacy_id", record.internalId), quoted("pivra_id", record.pivraId));
}

/// Removes the unsaved value from the session. It is emptied and not deleted: an empty value counts as absent
/// everywhere.
void clearUnsaved(NXOpen::BasePart& part, const RecordLog& log) {
    if (attemptWrite(part, "", log, "Failed to clear unsaved PIVRA_ID attribute from NX session:")) {
        log.warning("Cleared unsaved PIVRA_ID attribute from NX session:");
    }
}

bool writeAndSave(NXOpen::BasePart& part, const TraceabilityRecord& record) {
    const RecordLog log{record, "legacy_id"};
    if (!attemptWrite(part, record.pivraId, log, "Failed to write PIVRA_ID attribute:")) return false;
    log.info("PIVRA_ID attribute written in NX session:");
    if (attempt([&] { return savedCompletely(part); }, log,
                "Failed to save NX file after setting PIVRA_ID attribute:")) {
        log.info("PIVRA_ID attribute saved to NX file:");
        traceabilityState().savedPart = true;
        return true;
    }
    log.warning("PIVRA_ID attribute was set but the NX part could not be saved:");
    clearUnsaved(part, log);
    return false;
}

}  // namespace

TraceabilityState& traceabilityState() {
    static TraceabilityState instance;
    return instance;
}

std::optional<std::string> readPivraId(NXOpen::BasePart& part) {
    try {
        const auto title = nx::toHost(attributeTitle);
        if (!part.HasUserAttribute(title, NXObject::AttributeTypeString, noArrayIndex)) return std::nullopt;
        return platform::Trim(
            nx::utf8(part.GetUserAttributeAsString(title, NXObject::AttributeTypeString, noArrayIndex)));
    } catch (...) {
        return std::nullopt;
    }
}

std::string repairLegacyId(NXOpen::BasePart& part, const std::string& label, const std::string& legacyId) {
    const TraceabilityRecord record{label, legacyId, generateTraceableId()};
    RecordLog{record, "legacy_id"}.info("Generated PIVRA_ID for legacy NX internal ID:");
    if (writeAndSave(part, record)) return record.pivraId;
    recordFailure(record);
    return {};
}

void removeRedundantId(NXOpen::BasePart& part, const TraceabilityRecord& record) {
    const RecordLog log{record, "nx_id"};
    log.info("Deleting redundant PIVRA_ID attribute because NX internal ID is UUID-style:");
    if (!attempt([&] { return deleteAttribute(part), true; }, log, "Failed to delete redundant PIVRA_ID attribute:")) {
        return;
    }
    log.info("Redundant PIVRA_ID attribute deleted in NX session:");
    if (attempt([&] { return savedCompletely(part); }, log,
                "Failed to save NX file after deleting redundant PIVRA_ID attribute:")) {
        log.info("Redundant PIVRA_ID attribute deleted from NX file:");
        traceabilityState().savedPart = true;
        return;
    }
    log.warning("PIVRA_ID attribute was deleted but the NX part could not be saved:");
    if (attemptWrite(part, record.pivraId, log, "Failed to restore PIVRA_ID attribute after cleanup save failure:")) {
        log.warning("Restored unsaved PIVRA_ID attribute after cleanup save failure:");
    }
}

std::string traceabilityFailureMessage() {
    return traceabilityState().failureMessage;
}

void clearTraceabilityFailureMessage() {
    traceabilityState().failureMessage.clear();
}

bool traceabilitySavedPart() {
    return traceabilityState().savedPart;
}

void clearTraceabilitySavedPart() {
    traceabilityState().savedPart = false;
}

}  // namespace pivra
