// The steps that change what surrounds the plug-in: the host's parts, its settings, its files, the service.
#include "replay.h"
#include "stage.h"
#include "steps.h"
#include "text.h"

#include <devkit/gate.h>
#include <devkit/session.h>

namespace nxhost {

namespace fs = std::filesystem;

Action readBrowser(const Json& argument, const std::string& place) {
    const bool present = browserPresent(argument, place);
    return [present](Stage& stage) { stage.browser.setPresent(present); };
}

Action readEdit(const Json& argument, const std::string& place) {
    asObject(argument, place);
    return [argument](Stage& stage) { devkit::editPart(argument, stage.sandbox.parts()); };
}

Action readDisplay(const Json& argument, const std::string& place) {
    const auto name = asText(argument, place);
    return [name](Stage&) {
        auto& session = devkit::Session::instance();
        if (!name.empty() && !session.findPart(name)) throw StepError("The session has no part " + name + ".");
        session.setDisplayed(name);
    };
}

Action readApplication(const Json& argument, const std::string& place) {
    const int module = asNumber(argument, place);
    return [module](Stage&) { devkit::Session::instance().applicationModule = module; };
}

Action readFault(const Json& argument, const std::string& place) {
    Members members(argument, place);
    devkit::Fault fault;
    fault.call = members.text("call", "");
    fault.number = static_cast<std::size_t>(members.number("number", 1));
    fault.status = members.number("status", fault.status);
    fault.message = members.text("message", fault.message);
    fault.null = members.flag("null", false);
    members.done();
    return [fault](Stage&) { devkit::Gate::instance().addFault(fault); };
}

Action readProperties(const Json& argument, const std::string& place) {
    checkedProperties(argument, place);
    return [argument](Stage& stage) { stage.sandbox.writeProperties(argument); };
}

Action readService(const Json& argument, const std::string& place) {
    asObject(argument, place);
    return [argument](Stage& stage) { stage.sandbox.changeService(argument); };
}

Action readWrite(const Json& argument, const std::string& place) {
    Members members(argument, place);
    const auto file = members.text("file");
    const auto text = members.text("text");
    members.done();
    return [=](Stage& stage) { writeFile(stage.sandbox.inside(file), text); };
}

Action readDelete(const Json& argument, const std::string& place) {
    const auto name = asText(argument, place);
    return [name](Stage& stage) {
        if (fs::remove_all(stage.sandbox.inside(name)) == 0) throw StepError("There is no " + name + " to delete.");
    };
}

}  // namespace nxhost
