#include <uf.h>
#include <uf_help.h>

#include <devkit/session.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>

#include "c_memory.h"
#include "calls.h"
#include "host_text.h"

using devkit::CallInterceptor;

int UF_initialize() {
    const int status = devkit::enterUfAnywhere("UF_initialize");
    CallInterceptor::instance().bracketAsked(status);
    return status;
}

int UF_terminate() {
    const int status = devkit::enterUfAnywhere("UF_terminate");
    if (!devkit::status::refused(status)) CallInterceptor::instance().bracketClosed();
    return status;
}

int UF_ask_application_module(int* module_id) {
    if (const int status = devkit::enterUf("UF_ask_application_module")) return status;
    *module_id = devkit::Session::instance().applicationModule;
    return 0;
}

int UF_HELP_load_map_file(char* filename) {
    if (const int status = devkit::enterUf("UF_HELP_load_map_file")) return status;
    std::error_code ignored;
    const auto file = devkit::pathOf(devkit::utf8FromNarrow(filename));
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

void UF_free(void* memory) {
    devkit::enterUfAnywhere("UF_free");
    std::free(memory);
}

void UF_free_string_array(int n_strings, char** string_array) {
    devkit::enterUfAnywhere("UF_free_string_array");
    devkit::freeStrings(n_strings, string_array);
}

namespace devkit {

namespace {

template <class T>
T* allocate(std::size_t count) {
    return count == 0 ? nullptr : static_cast<T*>(std::malloc(count * sizeof(T)));
}

}  // namespace

int* newStatuses(std::size_t count, int status) {
    int* statuses = allocate<int>(count);
    std::fill_n(statuses, count, status);
    return statuses;
}

char* newString(const std::string& text) {
    if (text.empty() || CallInterceptor::instance().emptied()) return nullptr;
    const std::string narrow = narrowFromUtf8(text);
    char* result = allocate<char>(narrow.size() + 1);
    std::memcpy(result, narrow.c_str(), narrow.size() + 1);
    return result;
}

char** newStrings(const std::vector<std::string>& texts) {
    char** strings = allocate<char*>(texts.size());
    std::transform(texts.begin(), texts.end(), strings, newString);
    return strings;
}

void freeStrings(int count, char** strings) {
    if (strings == nullptr) return;
    std::for_each(strings, strings + count, std::free);
    std::free(strings);
}

}  // namespace devkit
