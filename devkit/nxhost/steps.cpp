#include "steps.h"

#include "stage.h"

#include <map>

namespace nxhost {

namespace {

void look(Stage& stage) {
    stage.transcript.write(dialogEvent("look", openDialog(stage)));
}

void awaitBrowser(Stage& stage) {
    stage.browser.finish();
}

void closeDialog(Stage& stage) {
    openDialog(stage);
    stage.screen.close();
}

// Steps without an argument, written as their name alone.
const std::map<std::string, void (*)(Stage&)> plainSteps{
    {"run", runPlugin}, {"unload", unloadPlugin}, {"look", look}, {"close", closeDialog}, {"browsed", awaitBrowser}};

// Steps with an argument: objects with their name as the one member.
const std::map<std::string, Action (*)(JsonMembers&, const std::string&)> stepReaders{
    {"press", readPress},     {"choose", readChoose}, {"answer", readAnswer},           {"browse", readBrowse},
    {"picture", readPicture}, {"wait", readWait},     {"browser", readBrowser},         {"edit", readEdit},
    {"display", readDisplay}, {"fault", readFault},   {"application", readApplication}, {"properties", readProperties},
    {"service", readService}, {"write", readWrite},   {"delete", readDelete},
};

Step readPlainStep(const Json& value, const std::string& place) {
    const auto plain = plainSteps.find(value.get<std::string>());
    if (plain == plainSteps.end())
        throw std::runtime_error(place + ": " + value.dump() + " is no step without an argument");
    return {place, value, false, plain->second};
}

Step readStep(const Json& value, const std::string& place) {
    if (value.is_string()) return readPlainStep(value, place);
    JsonMembers step(value, place);
    if (value.size() != 1) throw std::runtime_error(place + ": a step has exactly one member, its name");
    const auto& name = value.begin().key();
    const auto reader = stepReaders.find(name);
    if (reader == stepReaders.end()) throw std::runtime_error(place + ": \"" + name + "\" is no step with an argument");
    return {place, value, name == "wait", reader->second(step, name)};
}

}  // namespace

std::vector<Step> readSteps(JsonMembers& members, const std::string& name) {
    std::vector<Step> steps;
    forEachIn(members, name,
              [&](const Json& value, const std::string& place) { steps.push_back(readStep(value, place)); });
    return steps;
}

}  // namespace nxhost
