#include <devkit/gate.h>
#include <devkit/session.h>

#include <utility>
#include <vector>

#include "fault_json.h"
#include "json_members.h"
#include "part_json.h"

namespace devkit {

namespace {

template <class Function>
void forEachIn(JsonMembers& members, const std::string& name, Function function) {
    const nlohmann::json* list = members.find(name);
    if (list == nullptr) return;
    if (!list->is_array()) members.fail(name, "expected a list");
    for (std::size_t i = 0; i < list->size(); ++i) {
        function((*list)[i], members.pathOf(name) + "[" + std::to_string(i) + "]");
    }
}

PartData& addPart(const nlohmann::json& description, const std::string& where, const std::filesystem::path& folder) {
    JsonMembers members(description, where);
    PartData part;
    members.read("name", part.name);
    if (part.name.empty()) members.fail("name", "expected the part's name");
    if (Session::instance().findPart(part.name) != nullptr) members.fail("name", "two parts have this name");
    applyPart(members, part, folder);
    members.finish();
    return Session::instance().addPart(part);
}

void addFault(const nlohmann::json& description, const std::string& where) {
    Gate::instance().addFault(readFault(description, where));
}

void setClone(const nlohmann::json& description, const std::string& where) {
    JsonMembers members(description, where);
    CloneBehaviour& clone = Session::instance().clone;
    members.read("writesNothing", clone.writesNothing);
    members.read("rootName", clone.rootName);
    members.read("namingFailures", clone.namingFailures);
    members.read("commandLineNames", clone.commandLineNames);
    members.finish();
}

void setApplicationModule(JsonMembers& members) {
    static const std::map<std::string, int> modules{{"drafting", 1}, {"gateway", 2}, {"modeling", 3}};
    const nlohmann::json* value = members.find("applicationModule");
    if (value == nullptr) return;
    int& module = Session::instance().applicationModule;
    if (!value->is_string()) return members.read("applicationModule", module);
    const auto found = modules.find(value->get<std::string>());
    if (found == modules.end()) members.fail("applicationModule", "unknown module");
    module = found->second;
}

void setDisplayed(JsonMembers& members) {
    const nlohmann::json* value = members.find("displayed");
    if (value == nullptr || value->is_null()) return;
    std::string displayed;
    members.read("displayed", displayed);
    if (Session::instance().findPart(displayed) == nullptr) {
        members.fail("displayed", "no part has this name");
    }
    Session::instance().setDisplayed(displayed);
}

}  // namespace

void loadSession(const nlohmann::json& description, const std::filesystem::path& folder) {
    JsonMembers members(description, "session");
    std::vector<std::pair<PartData*, std::string>> added;
    forEachIn(members, "parts", [&](const nlohmann::json& part, const std::string& where) {
        added.emplace_back(&addPart(part, where, folder), where);
    });
    for (const auto& [part, where] : added) checkComponents(*part, where);
    forEachIn(members, "faults", addFault);
    setDisplayed(members);
    setApplicationModule(members);
    if (const nlohmann::json* clone = members.find("clone")) setClone(*clone, members.pathOf("clone"));
    members.finish();
}

void editPart(const nlohmann::json& change, const std::filesystem::path& folder) {
    JsonMembers members(change, "edit");
    std::string name;
    members.read("name", name);
    PartData* part = Session::instance().findPart(name);
    if (part == nullptr) members.fail("name", "no part has this name");
    PartData edited = *part;
    applyPart(members, edited, folder);
    members.finish();
    checkComponents(edited, "edit");
    *part = edited;
}

}  // namespace devkit
