// The built plug-in module, loaded as the host loads it.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace nxhost {

/// Host's thread. The module stays loaded until the process ends, as the plug-in asks of its host.
class Plugin {
 public:
    /// Loads the module. Throws std::runtime_error with the system's reason, or naming the entry point that is missing.
    explicit Plugin(const std::filesystem::path& file);

    void run();       ///< `ufusr`
    int askUnload();  ///< `ufusr_ask_unload`
    void cleanUp();   ///< `ufusr_cleanup`

    /// From now on `open` is called, on the calling thread, for each address that the plug-in hands to the shell, and
    /// its result is the shell's.
    void onOpen(std::function<int(const std::string&)> open);

 private:
    void* module_;
    void (*run_)(char*, int*, int) = nullptr;
    int (*askUnload_)() = nullptr;
    void (*cleanUp_)() = nullptr;
};

/// What the plug-in must export.
inline const std::vector<std::string> entryPoints{"NXSigningResource", "ufusr", "ufusr_ask_unload", "ufusr_cleanup"};

/// The names that the module exports, as far as this system tells them: all of them on Windows, elsewhere those of the
/// entry points that it has. Sorted. Throws as the constructor does.
std::vector<std::string> exportedNames(const std::filesystem::path& file);

}  // namespace nxhost
