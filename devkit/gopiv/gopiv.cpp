#include "gopiv.h"

#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string>

#include "client.h"
#include "text.h"

struct gopiv_client {
    gopiv::Client client;
};

namespace {

using nlohmann::json;

bool processIsEnding = false;

#if defined(_WIN32)
/// At the end of a process its libraries are told in turn, this one first, and every other thread is gone by then: a
/// client that goes later must not wait for any.
struct EndNotice {
    ~EndNotice() { processIsEnding = true; }
};
const EndNotice endNotice;
#endif

json answerTo(gopiv::Client& client, const char* operation, const char* request) {
    try {
        return {{"result", client.call(operation, json::parse(request))}};
    } catch (const std::exception& error) {
        return {{"error", error.what()}};
    } catch (const gopiv::SilentRefusal&) {
        return {{"error", nullptr}};
    }
}

char* copyOf(const std::string& text) {
    auto* const copy = static_cast<char*>(std::malloc(text.size() + 1));
    return copy == nullptr ? nullptr : static_cast<char*>(std::memcpy(copy, text.c_str(), text.size() + 1));
}

}  // namespace

gopiv_client* gopiv_create(void) {
    try {
        return new gopiv_client;
    } catch (...) {
        return nullptr;
    }
}

void gopiv_destroy(gopiv_client* client) {
    if (!processIsEnding) {
        delete client;
    }
}

void gopiv_set_log(gopiv_client* client, gopiv_log_function log, void* context) {
    client->client.log().setSink(log, context);
}

char* gopiv_call(gopiv_client* client, const char* operation, const char* request) {
    try {
        return copyOf(
            answerTo(client->client, operation, request).dump(-1, ' ', false, json::error_handler_t::replace));
    } catch (...) {
        return nullptr;
    }
}

void gopiv_free(char* answer) {
    std::free(answer);
}
