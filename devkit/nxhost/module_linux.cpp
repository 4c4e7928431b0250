#include "module.h"

#include <dlfcn.h>
#include <event_loop.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace nxhost {

void* loadModule(const std::filesystem::path& file) {
    void* module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module) throw std::runtime_error(std::string("The module cannot be loaded: ") + dlerror());
    return module;
}

void* symbolOf(void* module, const char* name) {
    return dlsym(module, name);
}

std::vector<std::string> namesOf(void* module, const std::vector<std::string>& candidates) {
    std::vector<std::string> names;
    std::copy_if(candidates.begin(), candidates.end(), std::back_inserter(names),
                 [&](const std::string& name) { return symbolOf(module, name.c_str()); });
    return names;
}

void replaceShell(void*, std::function<int(const std::string&)> open) {
    devkit::EventLoop::instance().setShell(std::move(open));
}

}  // namespace nxhost
