#include "screen.h"

#include <devkit/call_interceptor.h>

#include <map>

namespace nxhost {

namespace {

// "UGS::UICOMP_group" and "UICOMP_group" are "group".
std::string plainType(const std::string& type) {
    return type.substr(type.rfind('_') + 1);
}

bool holds(const devkit::BlockData& block, const char* property) {
    for (const auto* at = &block; at; at = at->parent)
        if (!devkit::propertyOr(*at, property, true)) return false;
    return true;
}

void addText(Event& look, const char* name, const std::string& text) {
    if (!text.empty()) look[name] = text;
}

void addBlocks(Event& blocks, const devkit::BlockData& parent) {
    for (const auto& child : parent.children) {
        blocks.push_back(lookOf(*child));
        addBlocks(blocks, *child);
    }
}

const std::map<devkit::BoxKind, const char*> kindNames{{devkit::BoxKind::error, "error"},
                                                       {devkit::BoxKind::warning, "warning"},
                                                       {devkit::BoxKind::information, "information"},
                                                       {devkit::BoxKind::question, "question"}};

}  // namespace

Event lookOf(const devkit::BlockData& block) {
    Event look{{"id", block.id}, {"type", plainType(block.type)}};
    look["label"] = devkit::textProperty(block, "Label");
    look["show"] = holds(block, "Show");
    look["enable"] = holds(block, "Enable");
    addText(look, "bitmap", devkit::textProperty(block, "Bitmap"));
    addText(look, "tooltip", devkit::textProperty(block, "BalloonTooltipText"));
    if (look["type"] != "enum") return look;
    look["members"] = block.members;
    look["value"] = devkit::propertyOr(block, "Value", -1);
    return look;
}

Event dialogEvent(const std::string& kind, const devkit::DialogData& dialog) {
    Event event{{"event", kind}, {"dialog", dialog.name}, {"title", dialog.title}, {"blocks", Event::array()}};
    addBlocks(event["blocks"], dialog.top);
    return event;
}

void Screen::show(devkit::DialogData& dialog) {
    if (shut_) return;
    dialog.onInitialize();
    dialog.onShown();
    {
        const auto window = open(dialog);
        open_.emplace_back(&dialog, window.get());
        transcript_.write(dialogEvent("dialog-shown", dialog));
        loop(*window);
        open_.pop_back();
    }
    if (frameAskedToClose()) violation("The host's own window was asked to close.");
    transcript_.write(dialogEvent("dialog-closed", dialog));
}

Screen::Window* Screen::windowOf(const devkit::DialogData* dialog) const {
    for (const auto& [shown, window] : open_)
        if (shown == dialog) return window;
    return nullptr;
}

void Screen::loop(Window& window) {
    while (!window.closed()) {
        const auto idle = onIdle ? onIdle() : Idle::waiting;
        if (idle == Idle::ended) return;
        if (idle == Idle::waiting) advance();
    }
}

int Screen::messageBox(const std::string& title, devkit::BoxKind kind, const std::string& message) {
    transcript_.write({{"event", "message-box"}, {"title", title}, {"kind", kindNames.at(kind)}, {"text", message}});
    if (!shut_) showBox(title, kind, message);
    return 1;
}

void Screen::update(devkit::BlockData& block) {
    dialog()->onUpdate(block);
}

void Screen::violation(const std::string& text) {
    devkit::CallInterceptor::instance().addViolation(text);
}

}  // namespace nxhost
