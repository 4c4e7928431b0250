#include "steps.h"

#include "expectations.h"
#include "text.h"

#include <devkit/session.h>

#include <algorithm>
#include <map>
#include <stdexcept>

namespace nxhost {

namespace fs = std::filesystem;

namespace {

using std::chrono::milliseconds;
constexpr milliseconds waitLimit{60000};  // a busy computer takes its time

using Condition = std::function<bool(const ReplayContext&)>;

// The block of the open dialog, which the user must be able to use.
devkit::BlockData& usableBlock(ReplayContext& context, const std::string& id, const std::string& type) {
    auto& dialog = openDialog(context);
    auto* block = dialog.find(id);
    if (!block) throw std::runtime_error("The dialog " + dialog.name + " has no block " + id + ".");
    const auto look = lookOf(*block);
    const auto actual = look["type"].get<std::string>();
    if (actual != type) throw std::runtime_error(id + " is a " + actual + ", no " + type + ".");
    if (!look["show"]) throw std::runtime_error(id + " is hidden.");
    if (!look["enable"]) throw std::runtime_error(id + " is disabled.");
    return *block;
}

int indexOf(const devkit::BlockData& list, const Json& entry) {
    const auto& members = list.members;
    const auto at = entry.is_string()
                        ? std::find(members.begin(), members.end(), entry.get<std::string>()) - members.begin()
                        : entry.get<std::ptrdiff_t>();
    if (at < 0 || at >= std::ssize(members)) throw std::runtime_error(list.id + " has no entry " + entry.dump() + ".");
    return static_cast<int>(at);
}

void press(ReplayContext& context, const Json& id) {
    context.screen.press(usableBlock(context, id, "button"));
}

void choose(ReplayContext& context, const Json& choice) {
    auto& list = usableBlock(context, choice["block"], "enum");
    context.screen.choose(list, indexOf(list, choice["entry"]));
}

void closeDialog(ReplayContext& context, const Json&) {
    openDialog(context);
    context.screen.close();
}

void look(ReplayContext& context, const Json&) {
    context.transcript.write(dialogEvent("look", openDialog(context)));
}

void takePicture(ReplayContext& context, const Json& name) {
    openDialog(context);
    if (!context.pictures.empty()) context.screen.savePicture(context.pictures / pathOf(std::string(name) + ".bmp"));
}

void answer(ReplayContext& context, const Json& answer) {
    const bool isLatest = answer.is_string();
    const auto& address = context.browser.address(isLatest ? 0 : answer.value("opened", 0));
    context.browser.answer(address, (isLatest ? answer : answer["choice"]) == "sign-in");
}

void browse(ReplayContext& context, const Json& page) {
    context.browser.load(context.browser.address(page.value("opened", 0)));
}

Condition blockMatches(const Event& pattern) {
    return [wanted = Event{{"blocks", Event::array({pattern})}}](const ReplayContext& context) {
        const auto* dialog = context.screen.dialog();
        return dialog && matches(wanted, dialogEvent("look", *dialog));
    };
}

Condition eventMatches(const Event& pattern) {
    return [pattern](const ReplayContext& context) {
        context.transcript.collect();
        const auto& events = context.transcript.events();
        const auto& uploads = context.transcript.waitingUploads();
        const auto wanted = [&](const Event& event) { return matches(pattern, event); };
        return std::any_of(events.begin() + static_cast<std::ptrdiff_t>(context.mark), events.end(), wanted) ||
               std::any_of(uploads.begin(), uploads.end(), wanted);
    };
}

Condition timeIsOver(milliseconds end) {
    return [end](const ReplayContext& context) { return context.screen.now() >= end; };
}

void wait(ReplayContext& context, const Json& target) {
    const auto now = std::chrono::steady_clock::now();
    if (target.is_number()) {
        const milliseconds time(target.get<int>());
        context.wait = Wait{timeIsOver(context.screen.now() + time), now + time + waitLimit, "the time"};
        return;
    }
    const bool isBlock = target.contains("block");
    const Event pattern = target[isBlock ? "block" : "event"];
    const milliseconds limit(target.value("limit", waitLimit.count()));
    context.wait = Wait{isBlock ? blockMatches(pattern) : eventMatches(pattern), now + limit, pattern.dump()};
}

void display(ReplayContext&, const Json& name) {
    auto& session = devkit::Session::instance();
    const std::string part = name;
    if (!part.empty() && !session.findPart(part)) throw std::runtime_error("The session has no part " + part + ".");
    session.setDisplayed(part);
}

void writeText(ReplayContext& context, const Json& file) {
    writeFile(context.sandbox.inside(file["file"]), file["text"]);
}

// On Windows a folder that the plug-in holds stays, but nothing in it does.
void removeAll(const fs::path& path) {
    std::error_code error;
    if (fs::is_directory(path))
        for (const auto& entry : fs::directory_iterator(path)) removeAll(entry);
    if (!fs::remove(path, error) && !fs::is_directory(path)) throw fs::filesystem_error("remove", path, error);
}

void deletePath(ReplayContext& context, const Json& name) {
    const auto path = context.sandbox.inside(name);
    if (!fs::exists(path)) throw std::runtime_error("There is no " + std::string(name) + " to delete.");
    removeAll(path);
}

// By name. Steps without an argument get null.
const std::map<std::string, void (*)(ReplayContext&, const Json&)> steps{
    {"run", [](ReplayContext& context, const Json&) { runPlugin(context); }},
    {"press", press},
    {"choose", choose},
    {"close", closeDialog},
    {"look", look},
    {"picture", takePicture},
    {"answer", answer},
    {"browse", browse},
    {"browsed", [](ReplayContext& context, const Json&) { context.browser.finish(); }},
    {"wait", wait},
    {"edit", [](ReplayContext& context, const Json& part) { devkit::editPart(part, context.sandbox.parts()); }},
    {"display", display},
    {"application", [](ReplayContext&, const Json& id) { devkit::Session::instance().applicationModule = id; }},
    {"fault", [](ReplayContext&, const Json& fault) { devkit::addFault(fault); }},
    {"browser", [](ReplayContext& context, const Json& word) { context.browser.setPresent(word == "records"); }},
    {"properties", [](ReplayContext& context, const Json& value) { context.sandbox.writeProperties(value); }},
    {"service", [](ReplayContext& context, const Json& members) { context.sandbox.changeService(members); }},
    {"write", writeText},
    {"delete", deletePath},
    {"unload", [](ReplayContext& context, const Json&) { unloadPlugin(context); }}};

std::string nameOf(const Json& step) {
    return step.is_string() ? step.get<std::string>() : step.begin().key();
}

}  // namespace

void checkStepNames(const Json& replay) {
    if (!replay.is_object() || !replay.contains("steps") || !replay["steps"].is_array()) return;
    for (std::size_t index = 0; index < replay["steps"].size(); ++index) {
        const auto& step = replay["steps"][index];
        if (!step.is_string() && (!step.is_object() || step.empty())) continue;
        if (const auto name = nameOf(step); !steps.contains(name))
            throw std::runtime_error("replay.steps[" + std::to_string(index) + "]: \"" + name + "\" is no step");
    }
}

bool isWait(const Json& step) {
    return nameOf(step) == "wait";
}

void perform(ReplayContext& context, const Json& step) {
    steps.at(nameOf(step))(context, step.is_string() ? Json() : step.front());
}

}  // namespace nxhost
