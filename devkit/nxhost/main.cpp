// Loads the built plug-in as the host does, and plays replays with it.
#include "by_hand.h"
#include "options.h"
#include "player.h"
#include "system.h"
#include "text.h"

#include <devkit/gate.h>
#include <devkit/session.h>

#include <iostream>
#include <memory>

namespace nxhost {

namespace {

namespace fs = std::filesystem;

enum Outcome { passed = 0, differs = 1, unusable = 2, notReached = 3 };

void startSession(const Replay& replay, const Sandbox& sandbox, Transcript& transcript) {
    devkit::Gate::instance().reset();
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

void addFault(const Options& options) {
    devkit::Fault fault;
    fault.number = options.fault;
    fault.null = options.nullFault;
    devkit::Gate::instance().addFault(fault);
}

// Says which call has failed, in a run with a fault.
Outcome outcomeOfFault(const Options& options) {
    const auto& calls = devkit::Gate::instance().calls();
    if (options.fault > calls.size()) return notReached;
    std::cerr << "Failed call: " << calls[options.fault - 1] << "\n";
    return passed;
}

// Plays one replay in this process, which the plug-in's state makes good for one only.
Outcome playHere(const Options& options, const fs::path& file) {
    const auto replay = readReplay(file, !options.interactive);
    Sandbox sandbox(options.sandbox, options.temp);
    sandbox.fill(replay, {options.plugin, options.application, options.plugin.parent_path() / NXHOST_SERVICE,
                          options.installed});
    Transcript transcript(std::cout, sandbox.root(),
                          options.stable ? std::optional<Placeholders>(replay.text) : std::nullopt);
    startSession(replay, sandbox, transcript);
    if (options.fault > 0) addFault(options);
    const auto screen = makeScreen(transcript, {sandbox.application()});
    if (!options.interactive) screen->showFrame();
    devkit::setPresenter(screen.get());
    Browser browser(transcript, replay.system.browser, options.browser);
    Plugin plugin(sandbox.plugin());
    plugin.onOpen([&browser](const std::string& address) { return browser.open(address); });
    Stage stage{sandbox, transcript, *screen, plugin, browser, options.pictures};
    const auto faults =
        options.interactive ? useByHand(replay, stage) : Player(replay, stage, options.fault > 0).play();
    for (const auto& fault : faults) std::cerr << replay.title << ": " << fault << "\n";
    const auto outcome = options.fault > 0 ? outcomeOfFault(options) : passed;
    return faults.empty() ? outcome : differs;
}

std::vector<std::string> childArguments(const Options& options, const fs::path& sandbox, const fs::path& file) {
    std::vector<std::string> arguments{"--keep", "--sandbox", utf8(sandbox), "--plugin", utf8(options.plugin)};
    arguments.insert(arguments.end(), {"--application", utf8(options.application)});
    if (options.stable) arguments.push_back("--stable");
    if (options.fault > 0) arguments.insert(arguments.end(), {"--fault", std::to_string(options.fault)});
    if (options.nullFault) arguments.push_back("--null");
    if (options.interactive) arguments.push_back("--interactive");
    if (!options.temp.empty()) arguments.insert(arguments.end(), {"--temp", utf8(options.temp)});
    if (!options.installed.empty()) arguments.insert(arguments.end(), {"--installed", utf8(options.installed)});
    if (!options.pictures.empty()) arguments.insert(arguments.end(), {"--pictures", utf8(options.pictures)});
    if (!options.browser.empty()) arguments.insert(arguments.end(), {"--browser", utf8(options.browser)});
    arguments.push_back(utf8(file));
    return arguments;
}

// Plays one replay in a process of its own: its sandbox can be removed only when the modules in it are no longer
// loaded.
int playApart(const Options& options, const fs::path& file, const fs::path& sandbox) {
    const int status = runProgram(programFile(), childArguments(options, sandbox, file));
    if (status > notReached) std::cerr << utf8(file.filename()) << ": the host ended with status " << status << ".\n";
    if (!options.keep) fs::remove_all(sandbox);
    return status;
}

fs::path sandboxFor(const Options& options, const fs::path& file) {
    if (options.sandbox.empty())
        return fs::temp_directory_path() / pathOf("nxhost-" + std::to_string(processId()) + "-" + utf8(file.stem()));
    return options.files.size() == 1 ? options.sandbox : options.sandbox / file.stem();
}

int playAll(const Options& options) {
    if (options.keep && !options.sandbox.empty() && options.files.size() == 1)
        return playHere(options, options.files.front());
    int worst = passed;
    for (const auto& file : options.files) worst = std::max(worst, playApart(options, file, sandboxFor(options, file)));
    return worst;
}

Outcome checkExports(const Options& options) {
    const auto names = exportedNames(options.plugin);
    for (const auto& name : names) std::cout << name << "\n";
    return names == entryPoints ? passed : differs;
}

int run(const std::vector<std::string>& arguments) try {
    const auto options = readOptions(arguments, programFile().parent_path());
    return options.exportCheck ? checkExports(options) : playAll(options);
} catch (const std::invalid_argument& error) {
    std::cerr << error.what() << "\n" << usage;
    return unusable;
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
