// The built plug-in module, loaded as the host loads it.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace nxhost {

/// Host's thread. The module stays loaded until the process ends, as the plug-in asks.
class Plugin {
 public:
    /// Loads the module. Throws std::runtime_error with the system's reason, or naming the entry point that is missing.
    explicit Plugin(const std::filesystem::path& file);

    void run();                    ///< `ufusr`
    int (*askUnload)() = nullptr;  ///< `ufusr_ask_unload`
    void (*cleanUp)() = nullptr;   ///< `ufusr_cleanup`

    /// Calls `open`, on the plug-in's thread, for each address that the plug-in hands to the shell, and returns its
    /// result as the shell's.
    void onOpen(std::function<int(const std::string&)> open);

 private:
    void* module_;
    void (*run_)(char*, int*, int) = nullptr;
};

/// What the plug-in must export.
inline const std::vector<std::string> entryPoints{"NXSigningResource", "ufusr", "ufusr_ask_unload", "ufusr_cleanup"};

}  // namespace nxhost
