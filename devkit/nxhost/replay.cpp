#include "replay.h"

#include "expectations.h"
#include "steps.h"
#include "text.h"

#include <stdexcept>

namespace nxhost {

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(Environment, browser, helpMap, registered, localAppData)

Replay readReplay(const std::filesystem::path& file, bool needsSteps) try {
    const auto text = readFile(file);
    const auto document = Json::parse(text);
    checkStepNames(document);
    checkReplay(document);
    if (needsSteps && !document.contains("steps")) throw std::runtime_error("replay.steps: is missing");
    const auto list = Json::array();
    const auto nothing = Json::object();
    Replay replay{text,
                  document.at("title"),
                  document.value("properties", Json()),
                  document.value("service", nothing),
                  document.value("session", nothing),
                  document.value("system", Environment()),
                  document.value("steps", list),
                  document.value("expect", list)};
    for (std::size_t index = 0; index < replay.steps.size(); ++index)
        if (isWait(replay.steps[index]))
            checkPattern(replay.steps[index]["wait"], "replay.steps[" + std::to_string(index) + "].wait");
    checkPattern(replay.expect, "replay.expect");
    return replay;
} catch (const Json::exception& error) {
    throw std::runtime_error(std::string("replay: ") + error.what());
}

}  // namespace nxhost
