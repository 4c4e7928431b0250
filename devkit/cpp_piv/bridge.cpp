#include <cpp_piv/bridge.h>

#include <mutex>
#include <stdexcept>
#include <utility>

#include "gopiv/gopiv.h"
#include "native_library.h"

namespace cpp_piv {
namespace {

using Sink = std::function<void(const std::string&, const std::string&)>;

template <class Function>
Function* nativeFunction(void* library, const std::string& path, const char* name) {
    void* address = findNativeFunction(library, name);
    if (address == nullptr) {
        throw std::runtime_error("The service library \"" + path + "\" lacks the entry point " + name + ".");
    }
    return reinterpret_cast<Function*>(address);
}

}  // namespace

struct DynamicCppPivBridge::Library {
    explicit Library(const std::string& path)
        : handle(loadNativeLibrary(path)),
          create(nativeFunction<decltype(gopiv_create)>(handle, path, "gopiv_create")),
          destroy(nativeFunction<decltype(gopiv_destroy)>(handle, path, "gopiv_destroy")),
          setLog(nativeFunction<decltype(gopiv_set_log)>(handle, path, "gopiv_set_log")),
          perform(nativeFunction<decltype(gopiv_call)>(handle, path, "gopiv_call")),
          release(nativeFunction<decltype(gopiv_free)>(handle, path, "gopiv_free")),
          client(create()) {
        if (client == nullptr) {
            throw std::runtime_error("The service library \"" + path + "\" made no client.");
        }
    }
    ~Library() { destroy(client); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    Sink currentSink() {
        const std::lock_guard lock(mutex);
        return sink;
    }

    void* handle;
    decltype(gopiv_create)* create;
    decltype(gopiv_destroy)* destroy;
    decltype(gopiv_set_log)* setLog;
    decltype(gopiv_call)* perform;
    decltype(gopiv_free)* release;
    gopiv_client* client;
    std::mutex mutex;
    Sink sink;  ///< guarded by the mutex
};

DynamicCppPivBridge::DynamicCppPivBridge(std::string libraryPath) : library_(std::make_unique<Library>(libraryPath)) {
    library_->setLog(
        library_->client,
        [](void* library, const char* level, const char* text) {
            try {
                if (const Sink sink = static_cast<Library*>(library)->currentSink()) {
                    sink(level, text);
                }
            } catch (...) {
                // A failing logger must not unwind through the native library.
            }
        },
        library_.get());
}

DynamicCppPivBridge::~DynamicCppPivBridge() = default;

std::string DynamicCppPivBridge::call(const std::string& operation, const std::string& request) {
    // Taken before the call: the bridge may be gone when a wait that its end has broken off returns.
    auto* const release = library_->release;
    const std::unique_ptr<char, decltype(release)> answer(
        library_->perform(library_->client, operation.c_str(), request.c_str()), release);
    if (answer == nullptr) {
        throw std::runtime_error("The service library gave no answer to the operation " + operation + ".");
    }
    return answer.get();
}

void DynamicCppPivBridge::setLogSink(Sink sink) {
    const std::lock_guard lock(library_->mutex);
    library_->sink = std::move(sink);
}

}  // namespace cpp_piv
