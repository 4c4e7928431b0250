// A replay as its file says.
#pragma once

#include "json.h"

#include <filesystem>
#include <string>

namespace nxhost {

/// What the plug-in finds around it.
struct Environment {
    std::string browser = "records";  ///< "none": no address can be opened
    bool helpMap = true;              ///< false: the help map does not lie beside the plug-in
    bool registered = true;  ///< false: the host does not know the folder application/, and finds no layout by its name
    bool localAppData = true;  ///< false: the environment variable LOCALAPPDATA is not set
};

struct Replay {
    std::string text;  ///< the whole file
    std::string title;
    Json properties;  ///< null, an object of texts or a text
    Json service;
    Json session;
    Environment system;
    Json steps;    ///< list; see steps.h
    Event expect;  ///< list; see expectations.h
};

/// Reads a replay, or a session, which needs no steps. Throws std::runtime_error that names the place of what is wrong
/// with it.
Replay readReplay(const std::filesystem::path& file, bool needsSteps);

/// Checks a replay against docs/replay.schema.json. Throws std::runtime_error that names the place of the first fault:
/// "replay.sesion: unknown member".
void checkReplay(const Json& replay);

}  // namespace nxhost
