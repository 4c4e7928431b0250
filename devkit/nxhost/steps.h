// The steps of a replay: what the user, the world around the host and the host's own parts do, in order.
#pragma once

#include "json.h"
#include "scrub.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace nxhost {

struct Stage;

/// A step that does not fit the state in which it was to be done.
class StepError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

/// Does a step. Host's thread; throws StepError, and what the stage's parts throw.
using Action = std::function<void(Stage&)>;

struct Step {
    std::string place;
    Event source;  ///< as written
    bool waits = false;
    Action perform;
};

/// Reads the list of steps `name`. Throws std::runtime_error that names the place of what is wrong with it.
std::vector<Step> readSteps(JsonMembers& members, const std::string& name);

// Each reads one kind of step, whose argument is the member `name`. Throw as readSteps() does.
Action readPress(JsonMembers& step, const std::string& name);
Action readChoose(JsonMembers& step, const std::string& name);
Action readAnswer(JsonMembers& step, const std::string& name);
Action readBrowse(JsonMembers& step, const std::string& name);
Action readPicture(JsonMembers& step, const std::string& name);
Action readWait(JsonMembers& step, const std::string& name);
Action readBrowser(JsonMembers& step, const std::string& name);
Action readEdit(JsonMembers& step, const std::string& name);
Action readDisplay(JsonMembers& step, const std::string& name);
Action readApplication(JsonMembers& step, const std::string& name);
Action readFault(JsonMembers& step, const std::string& name);
Action readProperties(JsonMembers& step, const std::string& name);
Action readService(JsonMembers& step, const std::string& name);
Action readWrite(JsonMembers& step, const std::string& name);
Action readDelete(JsonMembers& step, const std::string& name);

}  // namespace nxhost
