#include "options.h"

#include "text.h"

#include <charconv>
#include <map>
#include <stdexcept>

namespace nxhost {

const char* const usage =
    "nxhost [--stable] [--keep] [--sandbox DIR] [--pictures DIR] [--plugin FILE] [--application DIR]\n"
    "       [--installed DIR] [--browser PROGRAM] [--temp DIR] FILE...\n"
    "nxhost --fault N [--null] [option...] FILE\n"
    "nxhost --interactive [--keep] [--sandbox DIR] [--plugin FILE] [--application DIR] [--installed DIR] FILE\n"
    "nxhost --export-check [--plugin FILE]\n";

namespace {

// 0 when `text` is no number.
std::size_t numberOf(const std::string& text) {
    std::size_t number = 0;
    const auto* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end ? number : 0;
}

}  // namespace

Options readOptions(const std::vector<std::string>& arguments, const std::filesystem::path& programFolder) {
    Options options;
    options.plugin = programFolder / NXHOST_PLUGIN;
    options.application = pathOf(NXHOST_APPLICATION);
    const std::map<std::string, bool*> flags{{"--stable", &options.stable},
                                             {"--keep", &options.keep},
                                             {"--export-check", &options.exportCheck},
                                             {"--null", &options.nullFault},
                                             {"--interactive", &options.interactive}};
    const std::map<std::string, std::filesystem::path*> paths{
        {"--sandbox", &options.sandbox}, {"--temp", &options.temp},           {"--pictures", &options.pictures},
        {"--plugin", &options.plugin},   {"--installed", &options.installed}, {"--application", &options.application},
        {"--browser", &options.browser}};
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const auto& argument = arguments[index];
        if (flags.contains(argument)) {
            *flags.at(argument) = true;
        } else if (paths.contains(argument)) {
            if (++index == arguments.size()) throw std::invalid_argument(argument + " needs a path.");
            *paths.at(argument) = std::filesystem::absolute(pathOf(arguments[index]));
        } else if (argument == "--fault") {
            options.fault = ++index < arguments.size() ? numberOf(arguments[index]) : 0;
            if (options.fault == 0) throw std::invalid_argument("--fault needs the number of a call, from 1.");
        } else if (argument.starts_with("--")) {
            throw std::invalid_argument(argument + " is unknown.");
        } else {
            options.files.push_back(std::filesystem::absolute(pathOf(argument)));
        }
    }
    if (options.files.empty() != options.exportCheck) throw std::invalid_argument("What shall be played?");
    if (options.nullFault && options.fault == 0) throw std::invalid_argument("--null goes with --fault.");
    if (options.interactive && (options.files.size() > 1 || !options.browser.empty()))
        throw std::invalid_argument("--interactive takes one file, and the desktop's own browser.");
    return options;
}

}  // namespace nxhost
