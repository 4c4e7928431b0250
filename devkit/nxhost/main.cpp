// Loads the built plug-in as the host does, and plays replays with it.
#include "options.h"
#include "player.h"
#include "system.h"
#include "text.h"

#include <devkit/call_interceptor.h>
#include <devkit/session.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <random>

namespace nxhost {

namespace {

namespace fs = std::filesystem;

enum Outcome { passed = 0, differs = 1, unusable = 2, notReached = 3 };

void startSession(const Replay& replay, const Sandbox& sandbox, Transcript& transcript) {
    devkit::CallInterceptor::instance().reset();
    auto& session = devkit::Session::instance();
    session.reset();
    if (replay.system.registered) session.applicationFolders = {sandbox.application()};
    session.onEvent = [&transcript](const std::string& kind, const Json& facts) {
        Event event{{"event", kind}};
        event.update(Event(facts));
        transcript.write(event);
    };
    devkit::loadSession(replay.session, sandbox.parts());
}

// Says which call has failed, in a run with a fault.
Outcome outcomeOfFault(const Options& options) {
    const auto& calls = devkit::CallInterceptor::instance().calls();
    if (options.fault > calls.size()) return notReached;
    std::cerr << "Failed call: " << calls[options.fault - 1] << "\n";
    return passed;
}

// What the plug-in asked of its neighbours during the steps, and what is in use at the end, in one line.
std::string callReport(const ReplayContext& context) {
    auto report = resourcesInUse();
    report["calls"] = context.calls;
    return report.dump();
}

// How long the plug-in took to show each dialog, and the service to answer, in milliseconds, in one line.
std::string timeReport() {
    const auto& interceptor = devkit::CallInterceptor::instance();
    Json report{{"dialogs", Json::array()}, {"service", Json::object()}};
    for (const auto& [layout, own, all] : interceptor.dialogTimes())
        report["dialogs"].push_back({{"dialog", layout}, {"own", own.count()}, {"all", all.count()}});
    for (const auto& [name, call] : interceptor.counts())
        if (call.time.count() > 0) report["service"][name] = {{"count", call.count}, {"time", call.time.count()}};
    return report.dump();
}

// Plays one replay in this process. The plug-in keeps its state, so a process plays only one.
Outcome playHere(const Options& options, const fs::path& file) {
    const auto replay = readReplay(file, !options.interactive);
    Sandbox sandbox(options.sandbox, options.temp);
    sandbox.fill(replay, options);
    Transcript transcript(std::cout, sandbox.root(),
                          options.stable ? std::optional<Placeholders>(replay.text) : std::nullopt);
    startSession(replay, sandbox, transcript);
    if (options.fault > 0) devkit::addFault({{"number", options.fault}, {"null", options.nullFault}});
    const auto screen = makeScreen(transcript, {sandbox.application()});
    if (!options.interactive) screen->showFrame();
    devkit::presenter() = screen.get();
    Browser browser(transcript, replay.system.browser == "records", options.browser);
    Plugin plugin(sandbox.plugin());
    plugin.onOpen([&browser](const std::string& address) { return browser.open(address); });
    ReplayContext context{sandbox, transcript, *screen, plugin, browser, options.pictures};
    Player player(replay, context, options.fault > 0 || options.recover, options.recover);
    const auto faults = options.interactive ? player.useByHand() : player.play();
    for (const auto& fault : faults) std::cerr << replay.title << ": " << fault << "\n";
    if (options.recover) std::cerr << callReport(context) << "\n";
    if (options.times) std::cerr << timeReport() << "\n";
    const auto outcome = options.fault > 0 ? outcomeOfFault(options) : passed;
    return faults.empty() ? outcome : differs;
}

fs::path sandboxFor(const Options& options, const fs::path& name) {
    if (options.sandbox.empty())
        return fs::temp_directory_path() /
               pathOf("nxhost-" + std::to_string(std::random_device()() % 1000000) + "-" + utf8(name));
    return options.files.size() == 1 ? options.sandbox : options.sandbox / name;
}

// Plays one replay in a process of its own, with the same options: its sandbox can be removed only when the modules in
// it are no longer loaded.
int playApart(const Options& options, std::vector<std::string> arguments, const std::string& file) {
    const auto sandbox = sandboxFor(options, pathOf(file).stem());
    std::erase_if(arguments, [&options](const std::string& argument) {
        return std::find(options.files.begin(), options.files.end(), argument) != options.files.end();
    });
    arguments.insert(arguments.end(), {"--keep", "--sandbox", utf8(sandbox), file});
    const int status = runProgram(programFile(), arguments);
    if (status > notReached)
        std::cerr << utf8(pathOf(file).filename()) << ": the host ended with status " << status << ".\n";
    if (!options.keep) fs::remove_all(sandbox);
    return status;
}

int playAll(const Options& options, const std::vector<std::string>& arguments) {
    if (options.keep && !options.sandbox.empty() && options.files.size() == 1)
        return playHere(options, pathOf(options.files.front()));
    int worst = passed;
    for (const auto& file : options.files) worst = std::max(worst, playApart(options, arguments, file));
    return worst;
}

Outcome checkExports(const Options& options) {
    const auto names = namesOf(loadModule(options.plugin), entryPoints);
    for (const auto& name : names) std::cout << name << "\n";
    return names == entryPoints ? passed : differs;
}

int run(const std::vector<std::string>& arguments) try {
    const auto options = readOptions(arguments, programFile().parent_path());
    return options.exportCheck ? checkExports(options) : playAll(options, arguments);
} catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return unusable;
}

}  // namespace

}  // namespace nxhost

int main(int count, char** arguments) {
    nxhost::prepareOutput();
    return nxhost::run(nxhost::commandLine(count, arguments));
}
