#include "part_json.h"

#include <fstream>
#include <stdexcept>

#include "host_text.h"

namespace devkit {

namespace {

/// One of the listed words, or a failure that names the member.
template <class T>
T choice(const JsonMembers& members, const std::string& name, const std::string& word,
         const std::map<std::string, T>& words) {
    const auto found = words.find(word);
    if (found == words.end()) members.fail(name, "unknown word \"" + word + "\"");
    return found->second;
}

ComponentData component(const nlohmann::json& description, const std::string& where) {
    ComponentData result;
    if (description.is_null()) return result;
    if (description.is_string()) {
        result.part = description.get<std::string>();
        return result;
    }
    JsonMembers members(description, where);
    members.read("part", result.part);
    members.read("displayName", result.displayName);
    members.read("loaded", result.loaded);
    members.finish();
    return result;
}

void readComponents(JsonMembers& members, PartData& part) {
    const nlohmann::json* list = members.find("components");
    if (list == nullptr) return;
    if (!list->is_array()) members.fail("components", "expected a list");
    part.components.clear();
    for (std::size_t i = 0; i < list->size(); ++i) {
        const std::string where = members.pathOf("components") + "[" + std::to_string(i) + "]";
        part.components.push_back(component((*list)[i], where));
    }
}

void readFamily(JsonMembers& members, PartData& part) {
    const nlohmann::json* family = members.find("family");
    if (family == nullptr) return;
    if (family->is_object()) {
        JsonMembers member(*family, members.pathOf("family"));
        int index = 0;
        member.read("member", index);
        member.finish();
        part.familyMember = index;
        return;
    }
    std::string word;
    members.read("family", word);
    part.familyInstance = word == "instance";
    part.familyTemplate = word == "template";
    if (!part.familyInstance && !part.familyTemplate) members.fail("family", "unknown word \"" + word + "\"");
}

void readManaged(JsonMembers& members, PartData& part) {
    const nlohmann::json* managed = members.find("managed");
    if (managed == nullptr) return;
    if (!part.managed) part.managed.emplace();
    JsonMembers item(*managed, members.pathOf("managed"));
    item.read("number", part.managed->number);
    item.read("revision", part.managed->revision);
    item.read("fileType", part.managed->fileType);
    item.read("fileName", part.managed->fileName);
    item.read("configuredRevision", part.managed->configuredRevision);
    item.finish();
}

void readSave(JsonMembers& members, PartData& part) {
    static const std::map<std::string, SaveOutcome> outcomes{{"saved", SaveOutcome::saved},
                                                             {"unsavedParts", SaveOutcome::unsavedParts},
                                                             {"unsavedObjects", SaveOutcome::unsavedObjects},
                                                             {"throws", SaveOutcome::throws},
                                                             {"nullStatus", SaveOutcome::nullStatus}};
    std::string word;
    members.read("save", word);
    if (members.find("save") != nullptr) part.save = choice(members, "save", word, outcomes);
}

/// Reads the full path; true when the description names a file of the session's own.
bool readPath(JsonMembers& members, PartData& part, const std::filesystem::path& folder) {
    members.read("path", part.fullPath);
    std::string file;
    members.read("file", file);
    if (file.empty()) return false;
    part.fullPath = utf8FromPath((folder / pathFromUtf8(file)).make_preferred());
    return true;
}

/// Whether the part's file is one that the session created, and not one that merely has its path.
bool isOwnFile(const PartData& part, const std::filesystem::path& folder) {
    return !part.managed && part.fullPath.rfind(utf8FromPath((folder / "").make_preferred()), 0) == 0;
}

/// Reads the content; true when the description gives one.
bool readContent(JsonMembers& members, PartData& part) {
    std::uint64_t size = 0;
    members.read("contents", part.content);
    members.read("size", size);
    if (members.find("size") != nullptr) part.content.assign(static_cast<std::size_t>(size), 'x');
    return members.find("contents") != nullptr || members.find("size") != nullptr;
}

void writeFile(const JsonMembers& members, const PartData& part) {
    const std::filesystem::path file = pathFromUtf8(part.fullPath);
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
    std::ofstream out(file, std::ios::binary);
    out << part.content;
    out.close();
    if (!out) members.fail("file", "the file could not be written");
}

}  // namespace

void applyPart(JsonMembers& members, PartData& part, const std::filesystem::path& folder) {
    members.read("leaf", part.leaf);
    members.read("uniqueIdentifier", part.uniqueIdentifier);
    members.read("modified", part.modified);
    members.read("isPart", part.isPart);
    members.read("attributes", part.attributes);
    members.read("sheets", part.sheets);
    readComponents(members, part);
    readFamily(members, part);
    readManaged(members, part);
    readSave(members, part);

    bool missing = false;
    members.read("missing", missing);
    const bool isNamed = readPath(members, part, folder);
    const bool hasContent = readContent(members, part);
    if (!isOwnFile(part, folder)) return;
    std::error_code ignored;
    if (missing) {
        std::filesystem::remove(pathFromUtf8(part.fullPath), ignored);
    } else if (isNamed || hasContent) {
        writeFile(members, part);
    }
}

void checkComponents(const PartData& part, const std::string& where) {
    for (std::size_t i = 0; i < part.components.size(); ++i) {
        const ComponentData& placed = part.components[i];
        if (placed.part.empty() || !placed.loaded || Session::instance().findPart(placed.part) != nullptr) continue;
        throw std::runtime_error(where + ".components[" + std::to_string(i) + "]: no part is named \"" + placed.part +
                                 "\"");
    }
}

}  // namespace devkit
