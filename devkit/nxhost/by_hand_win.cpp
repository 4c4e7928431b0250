#include "by_hand.h"
#include "host_window_win.h"
#include "leftovers.h"
#include "readable.h"
#include "system.h"
#include "text.h"

#include <devkit/gate.h>

#include <windows.h>

#include <shellapi.h>

namespace nxhost {

namespace {

constexpr int lastFailure = 32;  // of the shell

int openInBrowser(Browser& browser, const std::string& address) {
    const int noted = browser.open(address);
    if (noted <= lastFailure) return noted;
    const auto result = ShellExecuteW(nullptr, L"open", pathOf(address).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return static_cast<int>(reinterpret_cast<INT_PTR>(result));
}

// The person may have to copy an address, of which the transcript keeps no secrets.
std::string shownLine(const Event& event, const Browser& browser) {
    return event["event"] == "opened" ? "Opened: " + browser.address(0) : lineOf(event);
}

}  // namespace

std::vector<std::string> useByHand(const Replay& replay, Stage& stage) {
    // Under Wine it would reach the browser, where no such folder is.
    setEnvironment("TMPDIR", {});
    HostWindow window(replay.title, stage);
    stage.plugin.onOpen([&stage](const std::string& address) { return openInBrowser(stage.browser, address); });
    stage.transcript.onEvent = [&](const Event& event) { window.say(shownLine(event, stage.browser)); };
    window.use();
    stage.transcript.onEvent = nullptr;
    unloadPlugin(stage);
    noteViolations(stage);
    auto faults = leftovers(replay, stage);
    for (const auto& violation : devkit::Gate::instance().violations()) faults.push_back("Broken rule: " + violation);
    return faults;
}

}  // namespace nxhost
