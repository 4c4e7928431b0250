// The text of pivra.properties, and the values that are read out of it.
#include "config/log_settings.h"
#include "config/service_environment.h"
#include "platform/text.h"
#include "target.h"

namespace {

void checkTable(const std::string& input) {
    const auto table = config::parseProperties(input);
    std::string written = "\n";  // a byte-order mark means something on the first line alone
    for (const auto& [key, value] : table) {
        require(!key.empty() && platform::Trim(key) == key && platform::Trim(value) == value, "no blanks at the ends");
        require(key.find_first_of("=\n") == std::string::npos, "a key ends at the equals sign");
        written += key + "=" + value + "\n";
    }
    require(config::parseProperties(written) == table, "a table that is written reads the same");
    const auto half = std::min(input.find('\n', input.size() / 2), input.size());
    auto both = config::parseProperties(half < input.size() ? input.substr(half) : "");
    both.merge(config::parseProperties(input.substr(0, half)));
    require(both == table, "each line is read on its own, and the last of several equal keys wins");
}

void checkValue(const std::string& value) {
    const bool yes = config::ParseBooleanSetting("key", value, true);
    require(yes || !config::ParseBooleanSetting("key", value, false), "a default is not reversed");
    const auto written = "\t" + platform::toLower(value) + " ";
    require(yes == config::ParseBooleanSetting("key", written, true), "blanks and letter case mean nothing");
    const auto level = logging::currentLevel();
    config::applyLogLevel("key", value);
    require(logging::currentLevel() == level || platform::Trim(value).size() < 9, "a level is one of the words");
    const auto environment = config::SelectServiceEnvironment({value, value, "", value, ""});
    for (const auto& text : environment) require(text.is_string() && text != "", "an environment lacks nothing");
}

}  // namespace

void check(const std::string& input) {
    checkTable(input);
    checkValue(input);
}
