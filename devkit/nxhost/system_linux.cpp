#include "system.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace nxhost {

std::vector<std::string> commandLine(int count, char** arguments) {
    return {arguments + 1, arguments + count};
}

void prepareOutput() {}

void setEnvironment(const char* name, const std::filesystem::path& value) {
    if (value.empty())
        unsetenv(name);
    else
        setenv(name, value.c_str(), 1);
}

std::filesystem::path programFile() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

unsigned long processId() {
    return static_cast<unsigned long>(getpid());
}

int runProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
    std::vector<std::string> texts = arguments;
    texts.insert(texts.begin(), program.string());
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (auto& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    if (posix_spawn(&child, program.c_str(), nullptr, nullptr, pointers.data(), environ) != 0)
        throw std::runtime_error("The program cannot be started: " + program.string());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace nxhost
