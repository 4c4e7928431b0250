// A replay as its file says.
#pragma once

#include "expectations.h"
#include "members.h"
#include "steps.h"

#include <filesystem>
#include <string>
#include <vector>

namespace nxhost {

/// What the plug-in finds around it.
struct Surroundings {
    bool browser = true;       ///< false: no address can be opened
    bool helpMap = true;       ///< false: the help map does not lie beside the plug-in
    bool localAppData = true;  ///< false: the environment variable LOCALAPPDATA is not set
};

struct Replay {
    std::string text;  ///< the whole file
    std::string title;
    Json properties;  ///< null, an object or a text
    Json service = Json::object();
    Json session = Json::object();
    Surroundings system;
    std::vector<Step> steps;
    std::vector<Expectation> expectations;
};

/// Reads a replay. Throws ReplayError, and std::runtime_error when the file cannot be read or is no JSON.
Replay readReplay(const std::filesystem::path& file);

/// True for "records", false for "none". Throws ReplayError for anything else.
bool browserPresent(const Json& value, const std::string& place);

/// Null, a text, or an object of texts: the forms of properties. Throws ReplayError.
const Json& checkedProperties(const Json& value, const std::string& place);

}  // namespace nxhost
