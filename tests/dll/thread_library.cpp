// A library whose thread may outlive its unloading.
#include "platform/thread.h"

#ifdef _WIN32
#define EXPORTED __declspec(dllexport)
#else
#define EXPORTED __attribute__((visibility("default")))
#endif

extern "C" EXPORTED void start(const std::function<void()>& task) {
    platform::runDetached([task] { task(); });
}
