#include <dlfcn.h>

#include <stdexcept>

#include "native_library.h"

namespace cpp_piv {

void* loadNativeLibrary(const std::string& path) {
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr) {
        const char* reason = dlerror();
        throw std::runtime_error("The service library \"" + path +
                                 "\" cannot be loaded: " + (reason != nullptr ? reason : "unknown reason") + ".");
    }
    return library;
}

void* findNativeFunction(void* library, const char* name) {
    return dlsym(library, name);
}

}  // namespace cpp_piv
