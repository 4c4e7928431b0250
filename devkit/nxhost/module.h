// Modules as the system loads them.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace nxhost {

/// Loads a module, whose own folder is searched for what it needs. Throws std::runtime_error with the system's reason.
void* loadModule(const std::filesystem::path& file);

/// Address of an exported function, or null.
void* symbolOf(void* module, const char* name);

/// The exported names: all of them where the system tells, otherwise those of `candidates` that are there. Sorted.
std::vector<std::string> namesOf(void* module, const std::vector<std::string>& candidates);

/// Puts `open` in the place of the shell, for that module alone.
void replaceShell(void* module, std::function<int(const std::string&)> open);

}  // namespace nxhost
