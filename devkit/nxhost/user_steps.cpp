// The steps that a user takes: in the dialogs, in the browser, with a camera.
#include "pattern.h"
#include "stage.h"
#include "steps.h"
#include "text.h"

#include <algorithm>

namespace nxhost {

namespace {

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

bool answerOf(const std::string& text, const std::string& place) {
    if (text != "sign-in" && text != "refuse") throw ReplayError(place, "must be \"sign-in\" or \"refuse\".");
    return text == "sign-in";
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
        return std::any_of(events.begin() + static_cast<std::ptrdiff_t>(stage.mark), events.end(),
                           [&](const Event& event) { return fits(pattern, event); });
    };
}

Action waitFor(std::function<bool(const Stage&)> over, int limit, const std::string& what) {
    return [=](Stage& stage) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(limit);
        stage.wait = Wait{over, end, what};
    };
}

Action readPause(int milliseconds) {
    return [milliseconds](Stage& stage) {
        const auto end = stage.screen.now() + std::chrono::milliseconds(milliseconds);
        waitFor([end](const Stage& now) { return now.screen.now() >= end; }, milliseconds + 15000, "the time")(stage);
    };
}

}  // namespace

devkit::DialogData& openDialog(Stage& stage) {
    if (!stage.screen.dialog()) throw StepError("No dialog is open.");
    return *stage.screen.dialog();
}

Action readPress(const Json& argument, const std::string& place) {
    const auto id = asText(argument, place);
    return [id](Stage& stage) { stage.screen.press(usableBlock(stage, id, "button")); };
}

Action readChoose(const Json& argument, const std::string& place) {
    Members members(argument, place);
    const auto id = members.text("block");
    const auto entry = members.need("entry");
    if (!entry.is_number_integer()) asText(entry, members.place("entry"));
    members.done();
    return [=](Stage& stage) {
        auto& list = usableBlock(stage, id, "enum");
        stage.screen.choose(list, indexOf(list, entry));
    };
}

Action readAnswer(const Json& argument, const std::string& place) {
    const auto whole = argument.is_string() ? Json{{"choice", argument}} : argument;
    Members members(whole, place);
    const bool accept = answerOf(members.text("choice"), members.place("choice"));
    const int opened = members.number("opened", 0);
    members.done();
    return [=](Stage& stage) { stage.browser.answer(stage.browser.address(opened), accept); };
}

Action readBrowse(const Json& argument, const std::string& place) {
    Members members(argument, place);
    const int opened = members.number("opened", 0);
    members.done();
    return [=](Stage& stage) { stage.browser.load(stage.browser.address(opened)); };
}

Action readPicture(const Json& argument, const std::string& place) {
    const auto name = asText(argument, place);
    return [name](Stage& stage) {
        openDialog(stage);
        if (!stage.pictures.empty()) stage.screen.savePicture(stage.pictures / pathOf(name + ".bmp"));
    };
}

Action readWait(const Json& argument, const std::string& place) {
    if (argument.is_number()) return readPause(asNumber(argument, place));
    Members members(argument, place);
    const auto* block = members.find("block");
    const auto* event = members.find("event");
    const int limit = members.number("limit", 15000);
    members.done();
    if (!block == !event) throw ReplayError(place, "must be a time, or have one of \"block\" and \"event\".");
    const Event pattern = asObject(block ? *block : *event, place);
    checkPattern(pattern, place);
    return waitFor(block ? blockCondition(pattern) : eventCondition(pattern), limit, pattern.dump());
}

}  // namespace nxhost
