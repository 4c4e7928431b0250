#include "stage.h"

#include "steps.h"

#include <devkit/gate.h>
#include <devkit/session.h>

namespace nxhost {

namespace {

// What the host answers for `ufusr_ask_unload`: the module stays until the host ends.
constexpr int unloadAtTermination = 3;

void addViolation(const std::string& text) {
    devkit::Gate::instance().addViolation(text);
}

void enter(Stage& stage, const char* name, void (Plugin::*call)()) {
    try {
        (stage.plugin.*call)();
    } catch (const std::exception& error) {
        addViolation(std::string("An exception left ") + name + ": " + error.what());
    } catch (...) {
        addViolation(std::string("An exception without a text left ") + name + ".");
    }
    const auto depth = devkit::Gate::instance().bracketDepth();
    if (depth != 0) addViolation(std::string(name) + " left a bracket open: depth " + std::to_string(depth) + ".");
    auto& contexts = devkit::Session::instance().helpContexts;
    // A context cannot be popped when the bracket that it takes is refused.
    if (!contexts.empty() && !devkit::Gate::instance().bracketRefused())
        addViolation(std::string(name) + " left a help context.");
    contexts.clear();
}

}  // namespace

void runPlugin(Stage& stage) {
    if (stage.unloaded) throw StepError("The host's session has ended.");
    if (stage.running) throw StepError("The plug-in is running already.");
    stage.running = true;
    stage.transcript.write({{"event", "run"}});
    enter(stage, "ufusr", &Plugin::run);
    stage.running = false;
    stage.transcript.write({{"event", "run-ended"}});
}

std::vector<std::string> noteViolations(Stage& stage) {
    std::vector<std::string> found;
    const auto& violations = devkit::Gate::instance().violations();
    for (; stage.violations < violations.size(); ++stage.violations) {
        found.push_back(violations[stage.violations]);
        stage.transcript.write({{"event", "violation"}, {"text", found.back()}});
    }
    return found;
}

void unloadPlugin(Stage& stage) {
    if (stage.running) throw StepError("The plug-in is running.");
    if (stage.unloaded) throw StepError("The host's session has ended already.");
    stage.unloaded = true;
    const int answer = stage.plugin.askUnload();
    if (answer != unloadAtTermination) addViolation("ufusr_ask_unload answers " + std::to_string(answer) + ".");
    enter(stage, "ufusr_cleanup", &Plugin::cleanUp);
    stage.transcript.write({{"event", "unloaded"}, {"temporaryFiles", stage.sandbox.temporaryFiles()}});
}

}  // namespace nxhost
