#include "options.h"

#include "text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace nxhost {

namespace {

void describe(CLI::App& app, Options& options) {
    app.set_help_flag();
    // An absolute path is no option.
    app.allow_windows_style_options(false);
    app.option_defaults()->take_last();
    const auto addPath = [&app](const char* name, std::filesystem::path& target, const char* meaning) {
        const auto set = [&target](const std::string& text) { target = std::filesystem::absolute(pathOf(text)); };
        return app.add_option_function<std::string>(name, set, meaning)->type_name("PATH");
    };
    app.add_flag("--stable", options.stable, "write placeholders for what differs from run to run");
    app.add_flag("--keep", options.keep, "leave the sandbox");
    addPath("--sandbox", options.sandbox, "play in this folder, which must be empty or not there");
    addPath("--pictures", options.pictures, "folder for the pictures that the replay asks for (Windows)");
    addPath("--plugin", options.plugin, "the plug-in module; otherwise the one beside this program");
    addPath("--application", options.application, "folder that ships beside the plug-in");
    addPath("--installed", options.installed, "run the plug-in of the package that is unpacked in this folder");
    addPath("--temp", options.temp, "folder for temporary files, which several hosts may share");
    auto* browser = addPath("--browser", options.browser, "start this program with each address that is opened");
    auto* fault = app.add_option("--fault", options.fault, "let this call of the host fail, from 1")
                      ->check(CLI::Range(1, std::numeric_limits<int>::max()))
                      ->type_name("NUMBER");
    app.add_flag("--null", options.nullFault, "the call that fails returns null where it can")->needs(fault);
    app.add_flag("--recover", options.recover, "in a replay with faults: upload once more at the end, and count calls");
    app.add_flag("--times", options.times, "say how long the plug-in took to show each dialog and to upload");
    auto* interactive = app.add_flag("--interactive", options.interactive, "open one file by hand (Windows)");
    auto* exportCheck = app.add_flag("--export-check", options.exportCheck, "only list what the plug-in exports");
    auto* files = app.add_option("FILE", options.files, "replays")->take_all();
    interactive->excludes(browser);
    exportCheck->excludes(files);
}

}  // namespace

Options readOptions(std::vector<std::string> arguments, const std::filesystem::path& programFolder) {
    Options options;
    options.plugin = programFolder / NXHOST_PLUGIN;
    options.application = pathOf(NXHOST_APPLICATION);
    CLI::App app("Loads the built plug-in as the host does, and plays replays with it. See docs/replay.md.", "nxhost");
    describe(app, options);
    std::reverse(arguments.begin(), arguments.end());
    try {
        app.parse(arguments);
        if (options.files.empty() && !options.exportCheck) throw CLI::RequiredError("A file to play");
        if (options.files.size() > 1 && options.interactive)
            throw CLI::ArgumentMismatch("--interactive takes one file");
    } catch (const CLI::ParseError& error) {
        throw std::invalid_argument(error.what() + ("\n\n" + app.help()));
    }
    return options;
}

}  // namespace nxhost
