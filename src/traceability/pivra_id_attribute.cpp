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

using logging::LogInfo;
using logging::LogWarning;
using NXOpen::NXObject;
using NXOpen::Update;

constexpr const char* attributeTitle = "PIVRA_ID";
constexpr int noArrayIndex = -1;

/// Makes the log line about a record that begins with `head`.
using LineOf = std::function<std::string(const char* head)>;

LineOf linesAbout(const TraceabilityRecord& record, const char* idName) {
    return [record, idName](const char* head) {
        return logging::LogLine(head)
            .quoted("part", record.part)
            .quoted(idName, record.internalId)
            .quoted("pivra_id", record.pivraId)
            .text();
    };
}

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

/// Runs one call of the host, and logs `failure` when it throws.
bool attempt(const std::function<bool()>& call, const std::string& failure) {
    try {
        return call();
    } catch (...) {
        LogWarning(failure);
        return false;
    }
}

bool attemptWrite(NXOpen::BasePart& part, const std::string& value, const std::string& failure) {
    return attempt([&] { return writeAttribute(part, value), true; }, failure);
}

void recordFailure(const TraceabilityRecord& record) {
    std::string& message = traceabilityState().failureMessage;
    if (!message.empty()) return;
    message = "Legacy file(s) detected. Unable to upload because PIVRA_ID could not be saved for " + record.part + ".";
    LogWarning(
        logging::LogLine(message).quoted("legacy_id", record.internalId).quoted("pivra_id", record.pivraId).text());
}

/// Removes the unsaved value from the session. It is emptied and not deleted: an empty value counts as absent
/// everywhere.
void clearUnsaved(NXOpen::BasePart& part, const LineOf& line) {
    if (attemptWrite(part, "", line("Failed to clear unsaved PIVRA_ID attribute from NX session:"))) {
        LogWarning(line("Cleared unsaved PIVRA_ID attribute from NX session:"));
    }
}

bool writeAndSave(NXOpen::BasePart& part, const TraceabilityRecord& record) {
    const LineOf line = linesAbout(record, "legacy_id");
    if (!attemptWrite(part, record.pivraId, line("Failed to write PIVRA_ID attribute:"))) return false;
    LogInfo(line("PIVRA_ID attribute written in NX session:"));
    if (attempt([&] { return savedCompletely(part); },
                line("Failed to save NX file after setting PIVRA_ID attribute:"))) {
        LogInfo(line("PIVRA_ID attribute saved to NX file:"));
        traceabilityState().savedPart = true;
        return true;
    }
    LogWarning(line("PIVRA_ID attribute was set but the NX part could not be saved:"));
    clearUnsaved(part, line);
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
    LogInfo(linesAbout(record, "legacy_id")("Generated PIVRA_ID for legacy NX internal ID:"));
    if (writeAndSave(part, record)) return record.pivraId;
    recordFailure(record);
    return {};
}

void removeRedundantId(NXOpen::BasePart& part, const TraceabilityRecord& record) {
    const LineOf line = linesAbout(record, "nx_id");
    LogInfo(line("Deleting redundant PIVRA_ID attribute because NX internal ID is UUID-style:"));
    if (!attempt([&] { return deleteAttribute(part), true; }, line("Failed to delete redundant PIVRA_ID attribute:"))) {
        return;
    }
    LogInfo(line("Redundant PIVRA_ID attribute deleted in NX session:"));
    if (attempt([&] { return savedCompletely(part); },
                line("Failed to save NX file after deleting redundant PIVRA_ID attribute:"))) {
        LogInfo(line("Redundant PIVRA_ID attribute deleted from NX file:"));
        traceabilityState().savedPart = true;
        return;
    }
    LogWarning(line("PIVRA_ID attribute was deleted but the NX part could not be saved:"));
    if (attemptWrite(part, record.pivraId, line("Failed to restore PIVRA_ID attribute after cleanup save failure:"))) {
        LogWarning(line("Restored unsaved PIVRA_ID attribute after cleanup save failure:"));
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
