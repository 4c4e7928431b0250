#include "steps.h"

#include "stage.h"

#include <map>

namespace nxhost {

namespace {

using PlainAction = void (*)(Stage&);

// Steps without an argument, written as their name alone.
const std::map<std::string, PlainAction> plainSteps{
    {"run", runPlugin},
    {"unload", unloadPlugin},
    {"look", [](Stage& stage) { stage.transcript.write(dialogEvent("look", openDialog(stage))); }},
    {"close",
     [](Stage& stage) {
         openDialog(stage);
         stage.screen.close();
     }},
};

// Steps with an argument: objects with their name as the one member.
const std::map<std::string, ReadAction> stepReaders{
    {"press", readPress},
    {"choose", readChoose},
    {"answer", readAnswer},
    {"browse", readBrowse},
    {"picture", readPicture},
    {"wait", readWait},
    {"edit", readEdit},
    {"display", readDisplay},
    {"application", readApplication},
    {"fault", readFault},
    {"browser", readBrowser},
    {"write", readWrite},
    {"properties", readProperties},
    {"service", readService},
    {"delete", readDelete},
};

Step readStep(const Json& value, const std::string& place) {
    if (value.is_string()) {
        const auto plain = plainSteps.find(value.get<std::string>());
        if (plain == plainSteps.end()) throw ReplayError(place, value.dump() + " is no step without an argument.");
        return {place, value, false, plain->second};
    }
    if (asObject(value, place).size() != 1) throw ReplayError(place, "a step has exactly one member, its name.");
    const auto& name = value.begin().key();
    const auto reader = stepReaders.find(name);
    if (reader == stepReaders.end()) throw ReplayError(place, "\"" + name + "\" is no step with an argument.");
    return {place, value, name == "wait", reader->second(value.begin().value(), place + "." + name)};
}

}  // namespace

std::vector<Step> readSteps(const Json& list, const std::string& place) {
    std::vector<Step> steps;
    for (const auto& value : asList(list, place))
        steps.push_back(readStep(value, place + "[" + std::to_string(steps.size()) + "]"));
    return steps;
}

}  // namespace nxhost
