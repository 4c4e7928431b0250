#include "replay_context.h"

#include <devkit/call_interceptor.h>
#include <devkit/session.h>

#include <stdexcept>

namespace nxhost {

namespace {

// What the host answers for `ufusr_ask_unload`: the module stays until the host ends.
constexpr int unloadAtTermination = 3;

void addViolation(const std::string& text) {
    devkit::CallInterceptor::instance().addViolation(text);
}

void checkLeftovers(const std::string& name, const Screen& screen) {
    auto& session = devkit::Session::instance();
    if (devkit::liveObjects() != 0) addViolation(name + " left " + std::to_string(devkit::liveObjects()) + " objects.");
    if (session.cloneSession) addViolation(name + " left a clone session open.");
    session.cloneSession.reset();
    if (screen.hasTimers()) addViolation(name + " left a timer.");
}

void enter(const char* name, const Screen& screen, const std::function<void()>& call) {
    devkit::CallInterceptor::instance().guard(name, call);
    checkLeftovers(name, screen);
    const auto depth = devkit::CallInterceptor::instance().bracketDepth();
    if (depth != 0) addViolation(std::string(name) + " left a bracket open: depth " + std::to_string(depth) + ".");
    auto& contexts = devkit::Session::instance().helpContexts;
    // A context cannot be popped when the bracket that it takes is refused.
    if (!contexts.empty() && !devkit::CallInterceptor::instance().bracketRefused())
        addViolation(std::string(name) + " left a help context.");
    contexts.clear();
}

}  // namespace

devkit::DialogData& openDialog(ReplayContext& context) {
    if (!context.screen.dialog()) throw std::runtime_error("No dialog is open.");
    return *context.screen.dialog();
}

void runPlugin(ReplayContext& context) {
    if (context.unloaded) throw std::runtime_error("The host's session has ended.");
    if (context.running) throw std::runtime_error("The plug-in is running already.");
    context.running = true;
    context.transcript.write({{"event", "run"}});
    enter("ufusr", context.screen, [&] { context.plugin.run(); });
    context.running = false;
    context.transcript.write({{"event", "run-ended"}});
}

std::vector<std::string> noteViolations(ReplayContext& context) {
    std::vector<std::string> found;
    const auto& violations = devkit::CallInterceptor::instance().violations();
    for (; context.violations < violations.size(); ++context.violations) {
        found.push_back(violations[context.violations]);
        context.transcript.write({{"event", "violation"}, {"text", found.back()}});
    }
    return found;
}

void unloadPlugin(ReplayContext& context) {
    if (context.running) throw std::runtime_error("The plug-in is running.");
    if (context.unloaded) throw std::runtime_error("The host's session has ended already.");
    context.unloaded = true;
    const int answer = context.plugin.askUnload();
    if (answer != unloadAtTermination) addViolation("ufusr_ask_unload answers " + std::to_string(answer) + ".");
    enter("ufusr_cleanup", context.screen, context.plugin.cleanUp);
    context.transcript.write({{"event", "unloaded"}, {"temporaryFiles", context.sandbox.temporaryFiles()}});
}

}  // namespace nxhost
