#include "replay.h"

#include "text.h"

namespace nxhost {

namespace {

Surroundings readSurroundings(const Json& value, const std::string& place) {
    Members members(value, place);
    Surroundings system;
    if (const auto* browser = members.find("browser"))
        system.browser = browserPresent(*browser, members.place("browser"));
    system.helpMap = members.flag("helpMap", true);
    system.localAppData = members.flag("localAppData", true);
    members.done();
    return system;
}

}  // namespace

bool browserPresent(const Json& value, const std::string& place) {
    const auto word = asText(value, place);
    if (word != "records" && word != "none") throw ReplayError(place, "must be \"records\" or \"none\".");
    return word == "records";
}

const Json& checkedProperties(const Json& value, const std::string& place) {
    if (value.is_null() || value.is_string()) return value;
    for (const auto& [key, text] : asObject(value, place).items()) asText(text, place + "." + key);
    return value;
}

Replay readReplay(const std::filesystem::path& file) {
    Replay replay;
    replay.text = readFile(file);
    const auto document = Json::parse(replay.text);
    Members members(document, "");
    replay.title = members.text("title");
    if (const auto* properties = members.find("properties"))
        replay.properties = checkedProperties(*properties, "properties");
    if (const auto* service = members.find("service")) replay.service = asObject(*service, "service");
    if (const auto* session = members.find("session")) replay.session = asObject(*session, "session");
    if (const auto* system = members.find("system")) replay.system = readSurroundings(*system, "system");
    replay.steps = readSteps(members.need("steps"), "steps");
    replay.expectations = readExpectations(members.need("expect"), "expect");
    members.done();
    return replay;
}

}  // namespace nxhost
