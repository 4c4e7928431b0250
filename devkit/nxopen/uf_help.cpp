#include <uf_help.h>

#include <devkit/session.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "calls.h"
#include "host_text.h"
#include "uf_status.h"

int UF_HELP_load_map_file(char* filename) {
    if (const int status = devkit::enterUf("UF_HELP_load_map_file")) return status;
    std::error_code ignored;
    const auto file = devkit::pathFromUtf8(devkit::utf8FromNarrow(filename));
    return std::filesystem::is_regular_file(file, ignored) ? 0 : devkit::status::notFound;
}

int UF_HELP_push_primary_context(char* app_context) {
    if (const int status = devkit::enterUf("UF_HELP_push_primary_context")) return status;
    auto& session = devkit::Session::instance();
    session.helpContexts = {devkit::utf8FromNarrow(app_context)};
    session.report("help-pushed", {{"context", session.helpContexts.back()}});
    return 0;
}

int UF_HELP_pop_context() {
    const int status = devkit::enterUf("UF_HELP_pop_context");
    if (devkit::status::refused(status)) return status;
    auto& session = devkit::Session::instance();
    if (session.helpContexts.empty()) return status != 0 ? status : devkit::status::emptyStack;
    session.report("help-popped", {{"context", session.helpContexts.back()}});
    session.helpContexts.pop_back();
    return status;
}
