#include <uf.h>

#include <devkit/session.h>

#include <cstdio>
#include <cstdlib>

#include "c_memory.h"
#include "calls.h"
#include "uf_status.h"

int UF_initialize() {
    const int status = devkit::Gate::instance().enterUf("UF_initialize", false);
    devkit::Gate::instance().bracketAsked(status);
    return status;
}

int UF_terminate() {
    const int status = devkit::Gate::instance().enterUf("UF_terminate", false);
    if (!devkit::status::refused(status)) devkit::Gate::instance().bracketClosed();
    return status;
}

int UF_get_fail_message(int fail_code, char message[133]) {
    if (const int status = devkit::enterUf("UF_get_fail_message")) return status;
    std::snprintf(message, 133, "Error %d", fail_code);
    return 0;
}

int UF_ask_application_module(int* module_id) {
    if (const int status = devkit::enterUf("UF_ask_application_module")) return status;
    *module_id = devkit::Session::instance().applicationModule;
    return 0;
}

void UF_free(void* memory) {
    devkit::Gate::instance().enterUf("UF_free", false);
    std::free(memory);
}

void UF_free_string_array(int n_strings, char** string_array) {
    devkit::Gate::instance().enterUf("UF_free_string_array", false);
    devkit::freeStrings(n_strings, string_array);
}
