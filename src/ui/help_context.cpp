#include "ui/help_context.h"

#include "config/properties.h"
#include "logging/log.h"
#include "nx/session.h"
#include "platform/text_encoding.h"

#include <uf_help.h>

#include <string>

namespace ui {
namespace {

// Not const: the host's functions take plain char pointers.
char contextName[] = "pivrahelp";

struct HelpMap {
    std::string narrowPath;
    std::string shownPath;
};

HelpMap& helpMap() {
    static HelpMap map = [] {
        const auto path = config::PropertiesFilePath().parent_path() / "pivrahelp.map";
        return HelpMap{platform::fileSystemTextFromPath(path), platform::utf8FromPath(path)};
    }();
    return map;
}

void warnOfStatus(const char* call, const char* subject, int status) noexcept {
    if (status == 0) return;
    logging::logBuilt(logging::LogLevel::warning, [&] {
        return std::string(call) + " failed for " + subject + " with status " + std::to_string(status);
    });
}

void warnOfRefusal(const char* head) noexcept {
    logging::logBuilt(logging::LogLevel::warning, [&] { return std::string(head) + contextName; });
}

bool push() {
    auto& map = helpMap();
    const nx::UfSession session;
    if (!session) {
        warnOfRefusal("UF_initialize failed; cannot configure help context for ");
        return false;
    }
    warnOfStatus("UF_HELP_load_map_file", map.shownPath.c_str(), UF_HELP_load_map_file(map.narrowPath.data()));
    const int status = UF_HELP_push_primary_context(contextName);
    warnOfStatus("UF_HELP_push_primary_context", contextName, status);
    return status == 0;
}

}  // namespace

bool PushHelpContext() noexcept {
    try {
        return push();
    } catch (...) {
        logging::LogWarning("The path of pivrahelp.map cannot be given to NX; the help context is not set.");
        return false;
    }
}

void PopHelpContext() noexcept {
    const nx::UfSession session;
    if (!session) return warnOfRefusal("UF_initialize failed; cannot restore help context for ");
    warnOfStatus("UF_HELP_pop_context", contextName, UF_HELP_pop_context());
}

}  // namespace ui
