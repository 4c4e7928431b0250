#include <cpp_piv/bridge.h>
#include <cpp_piv/client.h>
#include <devkit/call_interceptor.h>

#include <array>
#include <stdexcept>
#include <utility>

#include "gopiv/gopiv.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace cpp_piv {
namespace {

using Sink = std::function<void(const std::string&, const std::string&)>;

/// Loads the library, with its own dependencies from its folder and the system's alone. It stays for the process: its
/// threads may still be on their way out when the last client goes.
void* loadLibrary(const std::string& path) {
    const devkit::NeighbourTime time;
    static constexpr std::array kinds{devkit::FaultKind::error, devkit::FaultKind::unknown};
    if (const auto fault = devkit::CallInterceptor::instance().enterOther("cpp_piv::loadLibrary", kinds)) {
        if (fault->kind == devkit::FaultKind::unknown) throw UnknownFailure{};
        throw std::runtime_error(fault->message);
    }
#if defined(_WIN32)
    void* library = reinterpret_cast<void*>(
        LoadLibraryExA(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32));
    const std::string reason = library == nullptr ? "error " + std::to_string(GetLastError()) : "";
#else
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    const std::string reason = library == nullptr ? dlerror() : "";
#endif
    if (library == nullptr)
        throw std::runtime_error("The service library \"" + path + "\" cannot be loaded: " + reason + ".");
    return library;
}

void* findFunction(void* library, const char* name) {
#if defined(_WIN32)
    return reinterpret_cast<void*>(GetProcAddress(reinterpret_cast<HMODULE>(library), name));
#else
    return dlsym(library, name);
#endif
}

template <class Function>
Function* nativeFunction(void* library, const std::string& path, const char* name) {
    void* address = findFunction(library, name);
    if (address == nullptr)
        throw std::runtime_error("The service library \"" + path + "\" lacks the entry point " + name + ".");
    return reinterpret_cast<Function*>(address);
}

}  // namespace

struct DynamicCppPivBridge::Library {
    explicit Library(const std::string& path)
        : handle(loadLibrary(path)),
          create(nativeFunction<decltype(gopiv_create)>(handle, path, "gopiv_create")),
          destroy(nativeFunction<decltype(gopiv_destroy)>(handle, path, "gopiv_destroy")),
          setLog(nativeFunction<decltype(gopiv_set_log)>(handle, path, "gopiv_set_log")),
          perform(nativeFunction<decltype(gopiv_call)>(handle, path, "gopiv_call")),
          client(create()) {}
    ~Library() { destroy(client); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    void* handle;
    decltype(gopiv_create)* create;
    decltype(gopiv_destroy)* destroy;
    decltype(gopiv_set_log)* setLog;
    decltype(gopiv_call)* perform;
    gopiv_client* client;
    Sink sink;
};

DynamicCppPivBridge::DynamicCppPivBridge(std::string libraryPath) : library_(std::make_unique<Library>(libraryPath)) {}

DynamicCppPivBridge::~DynamicCppPivBridge() = default;

std::string DynamicCppPivBridge::call(const std::string& operation, const std::string& request) {
    std::string answer;
    library_->perform(
        library_->client, operation.c_str(), request.c_str(),
        [](void* context, const char* text) { *static_cast<std::string*>(context) = text; }, &answer);
    return answer;
}

void DynamicCppPivBridge::setLogSink(Sink sink) {
    library_->sink = std::move(sink);
    library_->setLog(
        library_->client,
        [](void* context, const char* level, const char* text) {
            try {
                (*static_cast<const Sink*>(context))(level, text);
            } catch (...) {
                // A failing logger must not unwind through the native library.
            }
        },
        &library_->sink);
}

}  // namespace cpp_piv
