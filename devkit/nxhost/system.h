// What the program asks of the operating system.
#pragma once

#include "json.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace nxhost {

/// The command line without the program's name, in UTF-8.
std::vector<std::string> commandLine(int count, char** arguments);

/// Standard output from now on takes UTF-8 and ends its lines with LF.
void prepareOutput();

/// Sets an environment variable of this process; an empty path removes it.
void setEnvironment(const char* name, const std::filesystem::path& value);

/// This program's own file.
std::filesystem::path programFile();

/// Runs a program to its end and returns its exit status; a program that was killed gives 128 or more. Throws
/// std::runtime_error when it cannot be started.
int runProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments);

/// Loads a module, whose own folder is searched for what it needs. Throws std::runtime_error with the system's reason.
void* loadModule(const std::filesystem::path& file);

/// Address of an exported function, or null.
void* symbolOf(void* module, const char* name);

/// The exported names: all of them on Windows, elsewhere those among `candidates`. Sorted.
std::vector<std::string> namesOf(void* module, const std::vector<std::string>& candidates);

/// {"threads", "handles"} of this process; empty on Windows.
Json resourcesInUse();

/// Replaces the shell by `open`, for that module alone.
void replaceShell(void* module, std::function<int(const std::string&)> open);

}  // namespace nxhost
