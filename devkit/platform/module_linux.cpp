#include "injected_fault.h"
#include "platform/module.h"

#include <dlfcn.h>

#include <stdexcept>

namespace platform {

std::filesystem::path moduleFileName() {
    Dl_info module{};
    if (devkit::injectedError("platform::moduleFileName", devkit::kinds::system) ||
        ::dladdr(reinterpret_cast<const void*>(&moduleFileName), &module) == 0)
        throw std::runtime_error("Failed to resolve nx-integration module path.");
    if (!module.dli_fname || !*module.dli_fname)
        throw std::runtime_error("Failed to read nx-integration module filename.");
    return std::filesystem::absolute(module.dli_fname);
}

}  // namespace platform
