#include "readable.h"

#include "text.h"

#include <cctype>
#include <vector>

namespace nxhost {

namespace {

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const auto& word : words) text += (text.empty() ? "" : ", ") + word;
    return text;
}

std::string valueText(const Event& value) {
    if (value.is_string()) return value.get<std::string>();
    if (!value.is_array()) return value.dump(-1, ' ', false, Event::error_handler_t::replace);
    std::vector<std::string> words;
    for (const auto& element : value) words.push_back(valueText(element));
    return joined(words);
}

// "message-box" is "Message box".
std::string titleOf(const Event& event) {
    auto title = replaced(event["event"].get<std::string>(), "-", " ");
    title.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(title.front())));
    return title;
}

std::string uploadText(const Event& upload) {
    std::vector<std::string> files;
    for (const auto& file : upload["files"])
        files.push_back(valueText(file["name"]) + " (" + valueText(file["size"]) + " bytes)");
    return "revision " + valueText(upload["revisionId"]) + " in workspace " + valueText(upload["workspaceId"]) + ": " +
           joined(files);
}

std::string membersText(const Event& event) {
    std::vector<std::string> members;
    for (const auto& [name, value] : event.items())
        if (name != "event" && name != "blocks") members.push_back(name + "=" + valueText(value));
    return joined(members);
}

std::string textOf(const Event& event) {
    const auto& kind = event["event"];
    if (kind == "step") return "> " + valueText(event["step"]);
    if (kind == "log") return "    " + valueText(event["level"]) + " " + valueText(event["text"]);
    const auto facts = kind == "upload" ? uploadText(event) : membersText(event);
    return titleOf(event) + (facts.empty() ? "" : ": ") + facts;
}

bool isSaved(const devkit::PartData& part) {
    std::error_code unreachable;
    return part.managed || std::filesystem::exists(pathOf(part.fullPath), unreachable);
}

}  // namespace

std::string lineOf(const Event& event) {
    return replaced(textOf(event), "\n", " ");
}

std::string kindOf(const devkit::PartData& part) {
    std::vector<std::string> words{part.managed ? "managed" : "native"};
    if (!part.components.empty()) words.push_back("assembly");
    if (!part.sheets.empty()) words.push_back("drawing sheets");
    if (part.familyInstance || part.familyTemplate || part.familyMember) words.push_back("part family");
    if (!std::regex_match(part.uniqueIdentifier, uuidPattern())) words.push_back("legacy");
    if (!isSaved(part)) words.push_back("not saved");
    return joined(words);
}

std::string fileOf(const devkit::PartData& part) {
    return part.managed ? part.managed->number + "/" + part.managed->revision : utf8(pathOf(part.fullPath).filename());
}

}  // namespace nxhost
