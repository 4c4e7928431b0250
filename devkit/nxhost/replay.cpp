#include "replay.h"

#include "text.h"

namespace nxhost {

namespace {

Surroundings readSurroundings(const Json& value, const std::string& place) {
    JsonMembers members(value, place);
    Surroundings system;
    if (members.find("browser")) system.browser = readBrowserWord(members, "browser");
    members.read("helpMap", system.helpMap);
    members.read("registered", system.registered);
    members.read("localAppData", system.localAppData);
    members.finish();
    return system;
}

}  // namespace

bool readBrowserWord(JsonMembers& members, const std::string& name) {
    const auto word = neededText(members, name);
    if (word != "records" && word != "none") members.fail(name, "expected \"records\" or \"none\"");
    return word == "records";
}

Json readPropertiesValue(JsonMembers& members, const std::string& name) {
    const auto& value = needed(members, name);
    std::map<std::string, std::string> texts;
    if (!value.is_null() && !value.is_string()) members.read(name, texts);
    return value;
}

Replay readReplay(const std::filesystem::path& file, bool needsSteps) {
    Replay replay;
    replay.text = readFile(file);
    const auto document = Json::parse(replay.text);
    JsonMembers members(document, "replay");
    replay.title = neededText(members, "title");
    if (members.find("properties")) replay.properties = readPropertiesValue(members, "properties");
    if (members.find("service")) replay.service = neededObject(members, "service");
    if (members.find("session")) replay.session = neededObject(members, "session");
    if (const auto* system = members.find("system"))
        replay.system = readSurroundings(*system, members.pathOf("system"));
    if (needsSteps || members.find("steps")) replay.steps = readSteps(members, "steps");
    if (members.find("expect")) replay.expectations = readExpectations(members, "expect");
    members.finish();
    return replay;
}

}  // namespace nxhost
