#include "gopiv.h"

#include "client.h"

struct gopiv_client : gopiv::Client {};

namespace {

bool processIsEnding = false;

#if defined(_WIN32)
/// When a process ends, Windows stops all other threads and then destroys the libraries' static objects, this one's
/// first. A client that is destroyed later must not wait for a thread.
struct EndNotice {
    ~EndNotice() { processIsEnding = true; }
};
const EndNotice endNotice;
#endif

}  // namespace

gopiv_client* gopiv_create(void) {
    return new gopiv_client;
}

void gopiv_destroy(gopiv_client* client) {
    if (!processIsEnding) delete client;
}

void gopiv_set_log(gopiv_client* client, gopiv_log_function log, void* context) {
    client->setLog(log, context);
}

void gopiv_call(gopiv_client* client, const char* operation, const char* request, gopiv_answer_function answer,
                void* context) {
    constexpr auto replaceBadUtf8 = nlohmann::json::error_handler_t::replace;
    answer(context, client->call(operation, request).dump(-1, ' ', false, replaceBadUtf8).c_str());
}
