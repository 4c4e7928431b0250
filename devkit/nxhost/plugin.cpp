#include "plugin.h"

#include "system.h"

#include <stdexcept>

namespace nxhost {

namespace {

template <typename Function>
void bind(void* module, const char* name, Function& function) {
    function = reinterpret_cast<Function>(symbolOf(module, name));
    if (!function) throw std::runtime_error(std::string("The plug-in has no entry point ") + name + ".");
}

}  // namespace

Plugin::Plugin(const std::filesystem::path& file) : module_(loadModule(file)) {
    bind(module_, "ufusr", run_);
    bind(module_, "ufusr_ask_unload", askUnload);
    bind(module_, "ufusr_cleanup", cleanUp);
}

void Plugin::run() {
    char parameter[1] = "";
    int result = 0;
    run_(parameter, &result, 0);
}

void Plugin::onOpen(std::function<int(const std::string&)> open) {
    replaceShell(module_, std::move(open));
}

}  // namespace nxhost
