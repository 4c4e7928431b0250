#include <devkit/call_interceptor.h>
#include <devkit/session.h>

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "host_text.h"

namespace devkit {

using nlohmann::json;
namespace fs = std::filesystem;

NLOHMANN_JSON_SERIALIZE_ENUM(SaveOutcome, {{SaveOutcome::saved, "saved"},
                                           {SaveOutcome::unsavedParts, "unsavedParts"},
                                           {SaveOutcome::unsavedObjects, "unsavedObjects"},
                                           {SaveOutcome::throws, "throws"},
                                           {SaveOutcome::nullStatus, "nullStatus"}})
NLOHMANN_JSON_SERIALIZE_ENUM(FaultKind, {{FaultKind::error, "error"},
                                         {FaultKind::exception, "exception"},
                                         {FaultKind::unknown, "unknown"},
                                         {FaultKind::null, "null"},
                                         {FaultKind::empty, "empty"},
                                         {FaultKind::missing, "missing"},
                                         {FaultKind::denied, "denied"},
                                         {FaultKind::shared, "shared"},
                                         {FaultKind::full, "full"},
                                         {FaultKind::vanished, "vanished"},
                                         {FaultKind::late, "late"},
                                         {FaultKind::cutOff, "cutOff"}})
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(Fault, call, number, status, message, kind)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(CloneBehaviour, writesNothing, rootName, namingFailures,
                                                commandLineNames)

namespace {

/// Reads a member; an absent one leaves `target` as it is.
template <class T>
void read(const json& object, const char* name, T& target) {
    if (const auto member = object.find(name); member != object.end()) member->get_to(target);
}

}  // namespace

static void from_json(const json& description, ComponentData& component) {
    if (description.is_null()) return;
    if (description.is_string()) {
        description.get_to(component.part);
        return;
    }
    read(description, "part", component.part);
    read(description, "displayName", component.displayName);
    read(description, "loaded", component.loaded);
}

static void from_json(const json& description, ManagedItem& item) {
    read(description, "number", item.number);
    read(description, "revision", item.revision);
    read(description, "fileType", item.fileType);
    read(description, "fileName", item.fileName);
    read(description, "configuredRevision", item.configuredRevision);
}

namespace {

[[noreturn]] void refuse(const std::string& member, const std::string& reason) {
    throw std::runtime_error(member + ": " + reason);
}

void readFamily(const json& family, PartData& part) {
    if (family.is_object()) {
        part.familyMember = family.value("member", 0);
        return;
    }
    part.familyInstance = family == "instance";
    part.familyTemplate = family == "template";
}

/// Whether the part's file is one that the session created, and not one that merely has its path.
bool isOwnFile(const PartData& part, const fs::path& folder) {
    return !part.managed && part.fullPath.rfind(utf8((folder / "").make_preferred()), 0) == 0;
}

void writeFile(const PartData& part, const std::string& where) {
    const fs::path file = pathOf(part.fullPath);
    std::error_code ignored;
    fs::create_directories(file.parent_path(), ignored);
    if (!writeWholeFile(file, part.content)) refuse(where + ".file", "the file could not be written");
}

/// Reads where the part's file is and what it holds, and creates or removes the file when it is the session's own.
void applyFile(const json& description, PartData& part, const fs::path& folder, const std::string& where) {
    read(description, "path", part.fullPath);
    const auto file = description.value("file", std::string());
    if (!file.empty()) part.fullPath = utf8((folder / pathOf(file)).make_preferred());
    read(description, "contents", part.content);
    if (description.contains("size")) part.content.assign(description["size"].get<std::size_t>(), 'x');
    if (!isOwnFile(part, folder)) return;
    std::error_code ignored;
    if (description.value("missing", false))
        fs::remove(pathOf(part.fullPath), ignored);
    else if (!file.empty() || description.contains("contents") || description.contains("size"))
        writeFile(part, where);
}

/// Applies the members of a part's description, all but its name.
void applyPart(const json& description, PartData& part, const fs::path& folder, const std::string& where) {
    read(description, "leaf", part.leaf);
    read(description, "uniqueIdentifier", part.uniqueIdentifier);
    read(description, "modified", part.modified);
    read(description, "isPart", part.isPart);
    read(description, "attributes", part.attributes);
    read(description, "sheets", part.sheets);
    read(description, "components", part.components);
    read(description, "save", part.save);
    if (description.contains("family")) readFamily(description["family"], part);
    if (description.contains("managed") && !part.managed) part.managed.emplace();
    if (part.managed) read(description, "managed", *part.managed);
    applyFile(description, part, folder, where);
}

/// Refuses a component that is loaded and places no part of the session.
void checkComponents(const PartData& part, const std::string& where) {
    for (std::size_t i = 0; i < part.components.size(); ++i) {
        const ComponentData& placed = part.components[i];
        if (placed.part.empty() || !placed.loaded || Session::instance().findPart(placed.part) != nullptr) continue;
        refuse(where + ".components[" + std::to_string(i) + "]", "no part is named \"" + placed.part + "\"");
    }
}

void addPart(const json& description, const fs::path& folder, const std::string& where) {
    PartData part;
    read(description, "name", part.name);
    if (part.name.empty()) refuse(where + ".name", "expected the part's name");
    if (Session::instance().findPart(part.name) != nullptr) refuse(where + ".name", "two parts have this name");
    applyPart(description, part, folder, where);
    Session::instance().addPart(part);
}

std::string placeOf(std::size_t part) {
    return "session.parts[" + std::to_string(part) + "]";
}

void addParts(const json& list, const fs::path& folder) {
    for (std::size_t i = 0; i < list.size(); ++i) addPart(list[i], folder, placeOf(i));
    const auto& parts = Session::instance().parts();
    for (std::size_t i = 0; i < parts.size(); ++i) checkComponents(parts[i], placeOf(i));
}

int applicationModule(const json& value) {
    if (value.is_number()) return value.get<int>();
    static const std::map<std::string, int> modules{{"drafting", 1}, {"gateway", 2}, {"modeling", 3}};
    return modules.at(value.get<std::string>());
}

void setDisplayed(const json& value) {
    if (value.is_null()) return;
    const auto name = value.get<std::string>();
    if (Session::instance().findPart(name) == nullptr) refuse("session.displayed", "no part has this name");
    Session::instance().setDisplayed(name);
}

}  // namespace

void loadSession(const json& description, const fs::path& folder) {
    auto& session = Session::instance();
    if (description.contains("parts")) addParts(description["parts"], folder);
    for (const auto& fault : description.value("faults", json::array())) addFault(fault);
    if (description.contains("displayed")) setDisplayed(description["displayed"]);
    if (description.contains("applicationModule"))
        session.applicationModule = applicationModule(description["applicationModule"]);
    read(description, "clone", session.clone);
}

void addFault(const json& description) {
    auto fault = description.get<Fault>();
    if (description.value("null", false)) fault.kind = FaultKind::null;
    CallInterceptor::instance().addFault(fault);
}

json callCounts() {
    json counts = json::object();
    for (const auto& [name, call] : CallInterceptor::instance().counts())
        counts[name] = {{"count", call.count}, {"kinds", std::vector<FaultKind>(call.kinds.begin(), call.kinds.end())}};
    return counts;
}

void editPart(const json& change, const fs::path& folder) {
    PartData* part = Session::instance().findPart(change.value("name", std::string()));
    if (part == nullptr) refuse("edit.name", "no part has this name");
    PartData edited = *part;
    applyPart(change, edited, folder, "edit");
    checkComponents(edited, "edit");
    *part = edited;
}

}  // namespace devkit
