// The steps that change what surrounds the plug-in: the host's parts, its settings, its files, the service.
#include "replay.h"
#include "stage.h"
#include "steps.h"
#include "text.h"

#include <devkit/gate.h>
#include <devkit/session.h>
#include <fault_json.h>

namespace nxhost {

namespace fs = std::filesystem;

namespace {

// On Windows a folder that the plug-in holds stays, but nothing in it does.
void removeAll(const fs::path& path) {
    std::error_code error;
    if (fs::is_directory(path))
        for (const auto& entry : fs::directory_iterator(path)) removeAll(entry);
    if (!fs::remove(path, error) && !fs::is_directory(path)) throw fs::filesystem_error("remove", path, error);
}

}  // namespace

Action readBrowser(JsonMembers& step, const std::string& name) {
    const bool present = readBrowserWord(step, name);
    return [present](Stage& stage) { stage.browser.setPresent(present); };
}

Action readEdit(JsonMembers& step, const std::string& name) {
    const auto change = neededObject(step, name);
    return [change](Stage& stage) { devkit::editPart(change, stage.sandbox.parts()); };
}

Action readDisplay(JsonMembers& step, const std::string& name) {
    const auto part = neededText(step, name);
    return [part](Stage&) {
        auto& session = devkit::Session::instance();
        if (!part.empty() && !session.findPart(part)) throw StepError("The session has no part " + part + ".");
        session.setDisplayed(part);
    };
}

Action readApplication(JsonMembers& step, const std::string& name) {
    int module = 0;
    step.read(name, module);
    return [module](Stage&) { devkit::Session::instance().applicationModule = module; };
}

Action readFault(JsonMembers& step, const std::string& name) {
    const auto fault = devkit::readFault(needed(step, name), step.pathOf(name));
    return [fault](Stage&) { devkit::Gate::instance().addFault(fault); };
}

Action readProperties(JsonMembers& step, const std::string& name) {
    const auto properties = readPropertiesValue(step, name);
    return [properties](Stage& stage) { stage.sandbox.writeProperties(properties); };
}

Action readService(JsonMembers& step, const std::string& name) {
    const auto members = neededObject(step, name);
    return [members](Stage& stage) { stage.sandbox.changeService(members); };
}

Action readWrite(JsonMembers& step, const std::string& name) {
    JsonMembers members(needed(step, name), step.pathOf(name));
    const auto file = neededText(members, "file");
    const auto text = neededText(members, "text");
    members.finish();
    return [=](Stage& stage) { writeFile(stage.sandbox.inside(file), text); };
}

Action readDelete(JsonMembers& step, const std::string& name) {
    const auto file = neededText(step, name);
    return [file](Stage& stage) {
        const auto path = stage.sandbox.inside(file);
        if (!fs::exists(path)) throw StepError("There is no " + file + " to delete.");
        removeAll(path);
    };
}

}  // namespace nxhost
