// Where the log goes. The first line is LOCALAPPDATA, the rest pivra.properties.
#include "config/log_settings.h"
#include "platform/text_encoding.h"
#include "target.h"

namespace {

namespace fs = std::filesystem;

bool isBelow(const fs::path& path, const fs::path& folder) {
    return path.native().starts_with(folder.native());
}

void checkResolution(const fs::path& value) {
    const auto path = logging::ResolveLogPath("base", value);
    require(path == value || isBelow(path, "base"), "a relative path lies below the base");
    const auto alone = logging::ResolveLogPath({}, value);
    require(alone.empty() || alone == path, "without a base there is only what needs none");
    for (const std::string root : {"C:/", "z:\\", "\\\\server\\", "//server/"}) {
        const fs::path absolute = root + value.native();
        require(logging::ResolveLogPath("base", absolute) == absolute, "an absolute path needs no base");
    }
}

}  // namespace

void check(const std::string& input) {
    const std::string local(input.substr(0, input.find('\n')).c_str());
    folder().writeProperties(input.substr(std::min(local.size() + 1, input.size())));
    test_support::setEnvironment("LOCALAPPDATA", local);
    config::LoadProperties();
    const auto directory = config::logDirectory();
    const auto value = platform::pathFromUtf8(config::GetProperty("pivra_nx_log_directory"));
    checkResolution(value);
    if (value.empty()) {
        const auto usual = local.empty() ? folder().path() : fs::path(local) / "Pivra" / "NX" / "logs";
        return require(directory == usual, "without a setting the log is the user's own");
    }
    require(directory == value || isBelow(directory, folder().path()), "a setting lies beside the plug-in");
    test_support::setEnvironment("LOCALAPPDATA", "/elsewhere");
    require(directory == config::logDirectory(), "with a setting the variable means nothing");
}
