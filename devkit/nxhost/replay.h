// A replay as its file says.
#pragma once

#include "expectations.h"
#include "json.h"
#include "steps.h"

#include <filesystem>
#include <string>
#include <vector>

namespace nxhost {

/// What the plug-in finds around it.
struct Surroundings {
    bool browser = true;     ///< false: no address can be opened
    bool helpMap = true;     ///< false: the help map does not lie beside the plug-in
    bool registered = true;  ///< false: the host does not know the folder application/, and finds no layout by its name
    bool localAppData = true;  ///< false: the environment variable LOCALAPPDATA is not set
};

struct Replay {
    std::string text;  ///< the whole file
    std::string title;
    Json properties;  ///< null, an object of texts or a text
    Json service = Json::object();
    Json session = Json::object();
    Surroundings system;
    std::vector<Step> steps;
    std::vector<Expectation> expectations;
};

/// Reads a replay, or a session, which needs no steps. Throws std::runtime_error that names the place of what is wrong
/// with it.
Replay readReplay(const std::filesystem::path& file, bool needsSteps);

// Members that steps have as well. Throw as readReplay() does.
/// True for "records", false for "none".
bool readBrowserWord(JsonMembers& members, const std::string& name);
/// Null, a text, or an object of texts.
Json readPropertiesValue(JsonMembers& members, const std::string& name);

}  // namespace nxhost
