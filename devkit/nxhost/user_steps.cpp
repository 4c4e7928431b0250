// The steps that a user takes: in the dialogs, in the browser, with a camera.
#include "pattern.h"
#include "stage.h"
#include "steps.h"
#include "text.h"

#include <algorithm>

namespace nxhost {

namespace {

constexpr int waitLimit = 60000;  // milliseconds: a busy computer takes its time

// The block of the open dialog, which the user must be able to use.
devkit::BlockData& usableBlock(Stage& stage, const std::string& id, const char* type) {
    auto& dialog = openDialog(stage);
    auto* block = dialog.find(id);
    if (!block) throw StepError("The dialog " + dialog.name + " has no block " + id + ".");
    const auto look = lookOf(*block);
    if (look["type"] != type) throw StepError(id + " is a " + look["type"].get<std::string>() + ", no " + type + ".");
    if (!look["show"]) throw StepError(id + " is hidden.");
    if (!look["enable"]) throw StepError(id + " is disabled.");
    return *block;
}

int indexOf(const devkit::BlockData& list, const Json& entry) {
    const auto& members = list.members;
    const auto at = entry.is_string()
                        ? std::find(members.begin(), members.end(), entry.get<std::string>()) - members.begin()
                        : entry.get<std::ptrdiff_t>();
    if (at < 0 || at >= std::ssize(members)) throw StepError(list.id + " has no entry " + entry.dump() + ".");
    return static_cast<int>(at);
}

bool readChoice(JsonMembers& members, const std::string& name) {
    const auto word = neededText(members, name);
    if (word != "sign-in" && word != "refuse") members.fail(name, "expected \"sign-in\" or \"refuse\"");
    return word == "sign-in";
}

// Number of an opened address, 0 for the latest.
int readOpened(JsonMembers& members) {
    int opened = 0;
    members.read("opened", opened);
    return opened;
}

Action answerTo(int opened, bool accept) {
    return [=](Stage& stage) { stage.browser.answer(stage.browser.address(opened), accept); };
}

std::function<bool(const Stage&)> blockCondition(const Event& pattern) {
    return [pattern](const Stage& stage) {
        const auto* dialog = stage.screen.dialog();
        if (!dialog) return false;
        const auto event = dialogEvent("look", *dialog);
        return fits({{"blocks", Event::array({pattern})}}, event);
    };
}

std::function<bool(const Stage&)> eventCondition(const Event& pattern) {
    return [pattern](const Stage& stage) {
        stage.transcript.collect();
        const auto& events = stage.transcript.events();
        const auto& uploads = stage.transcript.waitingUploads();
        const auto wanted = [&](const Event& event) { return fits(pattern, event); };
        return std::any_of(events.begin() + static_cast<std::ptrdiff_t>(stage.mark), events.end(), wanted) ||
               std::any_of(uploads.begin(), uploads.end(), wanted);
    };
}

Action waitFor(const std::function<bool(const Stage&)>& over, int limit, const std::string& what) {
    return [=](Stage& stage) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(limit);
        stage.wait = Wait{over, end, what};
    };
}

Action pause(int milliseconds) {
    return [milliseconds](Stage& stage) {
        const auto end = stage.screen.now() + std::chrono::milliseconds(milliseconds);
        const auto over = [end](const Stage& now) { return now.screen.now() >= end; };
        waitFor(over, milliseconds + waitLimit, "the time")(stage);
    };
}

}  // namespace

devkit::DialogData& openDialog(Stage& stage) {
    if (!stage.screen.dialog()) throw StepError("No dialog is open.");
    return *stage.screen.dialog();
}

Action readPress(JsonMembers& step, const std::string& name) {
    const auto id = neededText(step, name);
    return [id](Stage& stage) { stage.screen.press(usableBlock(stage, id, "button")); };
}

Action readChoose(JsonMembers& step, const std::string& name) {
    JsonMembers members(needed(step, name), step.pathOf(name));
    const auto id = neededText(members, "block");
    const auto entry = needed(members, "entry");
    if (!entry.is_string() && !entry.is_number_integer()) members.fail("entry", "expected a text or a whole number");
    members.finish();
    return [=](Stage& stage) {
        auto& list = usableBlock(stage, id, "enum");
        stage.screen.choose(list, indexOf(list, entry));
    };
}

Action readAnswer(JsonMembers& step, const std::string& name) {
    if (needed(step, name).is_string()) return answerTo(0, readChoice(step, name));
    JsonMembers members(needed(step, name), step.pathOf(name));
    const bool accept = readChoice(members, "choice");
    const int opened = readOpened(members);
    members.finish();
    return answerTo(opened, accept);
}

Action readBrowse(JsonMembers& step, const std::string& name) {
    JsonMembers members(needed(step, name), step.pathOf(name));
    const int opened = readOpened(members);
    members.finish();
    return [=](Stage& stage) { stage.browser.load(stage.browser.address(opened)); };
}

Action readPicture(JsonMembers& step, const std::string& name) {
    const auto file = pathOf(neededText(step, name) + ".bmp");
    return [file](Stage& stage) {
        openDialog(stage);
        if (!stage.pictures.empty()) stage.screen.savePicture(stage.pictures / file);
    };
}

Action readWait(JsonMembers& step, const std::string& name) {
    const auto& argument = needed(step, name);
    int milliseconds = 0;
    if (argument.is_number()) {
        step.read(name, milliseconds);
        return pause(milliseconds);
    }
    JsonMembers members(argument, step.pathOf(name));
    const auto* block = members.find("block");
    const auto* event = members.find("event");
    int limit = waitLimit;
    members.read("limit", limit);
    members.finish();
    if (!block == !event) step.fail(name, "expected a time, or one of \"block\" and \"event\"");
    const Event pattern = neededObject(members, block ? "block" : "event");
    checkPattern(pattern, step.pathOf(name));
    return waitFor(block ? blockCondition(pattern) : eventCondition(pattern), limit, pattern.dump());
}

}  // namespace nxhost
