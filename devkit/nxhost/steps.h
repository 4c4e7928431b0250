// The steps of a replay: what the user, the world around the host and the host's own parts do, in order.
#pragma once

#include "members.h"
#include "scrub.h"

#include <functional>
#include <string>
#include <vector>

namespace nxhost {

struct Stage;

/// A step that does not fit the state in which it was to be done.
class StepError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

struct Step {
    std::string place;
    Event source;  ///< as written
    bool waits = false;
    std::function<void(Stage&)> perform;  ///< host's thread; throws StepError and what the stage's parts throw
};

/// Reads the "steps" list. Throws ReplayError.
std::vector<Step> readSteps(const Json& list, const std::string& place);

using Action = std::function<void(Stage&)>;
using ReadAction = Action (*)(const Json& argument, const std::string& place);

// Each reads the argument of one step. Throw ReplayError.
Action readPress(const Json& argument, const std::string& place);
Action readChoose(const Json& argument, const std::string& place);
Action readAnswer(const Json& argument, const std::string& place);
Action readBrowse(const Json& argument, const std::string& place);
Action readPicture(const Json& argument, const std::string& place);
Action readWait(const Json& argument, const std::string& place);
Action readBrowser(const Json& argument, const std::string& place);
Action readEdit(const Json& argument, const std::string& place);
Action readDisplay(const Json& argument, const std::string& place);
Action readApplication(const Json& argument, const std::string& place);
Action readFault(const Json& argument, const std::string& place);
Action readProperties(const Json& argument, const std::string& place);
Action readService(const Json& argument, const std::string& place);
Action readWrite(const Json& argument, const std::string& place);
Action readDelete(const Json& argument, const std::string& place);

}  // namespace nxhost
