// The identifiers of a part. The first byte says what there is, then come its internal identifier, a line feed, and its
// attribute PIVRA_ID.
#include "nx/session.h"
#include "service/workspaces.h"
#include "target.h"
#include "traceability/nx_uuid.h"
#include "traceability/pivra_id_attribute.h"
#include "traceability/traceable_id.h"

#include <devkit/call_interceptor.h>
#include <devkit/session.h>

#include <algorithm>
#include <nlohmann/json.hpp>

namespace {

using pivra::isNxUuidFormat;

int writes = 0;

NXOpen::BasePart* partOf(char kind, const std::string& id, const std::string& attribute) {
    auto& session = devkit::Session::instance();
    devkit::CallInterceptor::instance().reset();
    session.reset();
    session.onEvent = [](const auto&, const auto&) { ++writes; };
    devkit::PartData part;
    part.name = "part";
    part.uniqueIdentifier = id;
    if ((kind & 1) != 0) part.attributes["PIVRA_ID"] = attribute;
    part.save = static_cast<devkit::SaveOutcome>((kind >> 2) & 3);
    session.addPart(part);
    session.setDisplayed((kind & 2) != 0 ? "part" : "");
    pivra::clearTraceabilityFailureMessage();
    writes = 0;
    return session.object("part");
}

/// Returns the identifier.
std::string read(NXOpen::BasePart* part, const std::string& id) {
    nx::PartNames names;
    auto shown = pivra::resolveDisplayTraceableId(part, names);
    const bool isReplaced = !id.empty() && !isNxUuidFormat(id) && isNxUuidFormat(shown);
    require(shown == id || isReplaced, "only a legacy identifier is replaced, and by a UUID");
    const bool isLegacy = !shown.empty() && !isNxUuidFormat(shown);
    require(pivra::legacyIdWarningNeeded(part, names) == isLegacy, "a legacy identifier is warned of");
    return shown;
}

void checkRepair(NXOpen::BasePart* part, const std::string& id, const std::string& sent) {
    require(sent.empty() != pivra::traceabilityFailureMessage().empty(), "a failed repair is said");
    if (sent.empty()) return;
    writes = 0;
    nx::PartNames names;
    require(isNxUuidFormat(sent) && pivra::resolveTraceableId(part, names) == sent, "a repair gives a UUID and lasts");
    require(read(part, id) == sent && writes == 0, "a repaired part shows what is sent");
}

void checkTexts(const std::string& id, const std::string& fileName) {
    require(!isNxUuidFormat(id) || (id.size() == 36 && std::count(id.begin(), id.end(), '-') == 4), "a UUID is one");
    const auto key = pivra::revisionLookupKey(id, fileName, true);
    require(key.starts_with(id), "a key begins with the identifier");
    require(pivra::revisionLookupKey(key, fileName, true) == key, "a key is a key");
}

}  // namespace

void check(const std::string& input) {
    if (input.empty()) return;
    const auto end = std::min(input.find('\n', 1), input.size());
    const std::string id(input.substr(1, end - 1).c_str());
    const std::string attribute(input.substr(std::min(end + 1, input.size())).c_str());
    checkTexts(id, attribute);
    auto* part = partOf(input[0], id, attribute);
    const auto shown = read(part, id);
    require(writes == 0, "reading never writes");
    nx::PartNames names;
    const auto sent = pivra::resolveTraceableId(part, names);
    const bool isDisplayed = (input[0] & 2) != 0;
    if (isDisplayed && !shown.empty() && !isNxUuidFormat(shown)) return checkRepair(part, id, sent);
    require(sent == shown, "what needs no repair is sent as it is shown");
    require(isDisplayed || writes == 0, "only the displayed part is written");
}
