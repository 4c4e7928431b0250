// The C interface of the native service library.
//
// A client of the library is a handle with a state of its own: its options, its sign-in, its service. Texts are UTF-8
// and end at a null character. No function throws.
#pragma once

#if defined(_WIN32)
#define GOPIV_EXPORT __declspec(dllexport)
#else
#define GOPIV_EXPORT __attribute__((visibility("default")))
#endif

extern "C" {

typedef struct gopiv_client gopiv_client;

/// Takes a log text: `level` is "debug", "info", "warning" or "error". Called during gopiv_call(), on its thread.
typedef void (*gopiv_log_function)(void* context, const char* level, const char* text);

/// Takes the answer of a call, a JSON object: {"result": ...} on success, {"error": "message"} when the operation
/// failed, {"error": null} when it failed without giving a reason.
typedef void (*gopiv_answer_function)(void* context, const char* answer);

/// Makes a client. Give it back with gopiv_destroy().
GOPIV_EXPORT gopiv_client* gopiv_create(void);

/// Ends the client: waiting calls fail, every call under way is waited for, and its service stops. Safe while the
/// loader's lock is held; during the process's own end it does nothing.
GOPIV_EXPORT void gopiv_destroy(gopiv_client* client);

/// Sets where the client's log texts go. Before the first gopiv_call().
GOPIV_EXPORT void gopiv_set_log(gopiv_client* client, gopiv_log_function log, void* context);

/// Performs one operation with a JSON object as its request, and blocks until it is done and `answer` has been called
/// once. Any thread, several at once.
GOPIV_EXPORT void gopiv_call(gopiv_client* client, const char* operation, const char* request,
                             gopiv_answer_function answer, void* context);
}
