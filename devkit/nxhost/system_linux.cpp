#include "system.h"

#include <dlfcn.h>
#include <event_loop.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <thread>

namespace nxhost {

std::vector<std::string> commandLine(int count, char** arguments) {
    return {arguments + 1, arguments + count};
}

void prepareOutput() {}

void setEnvironment(const char* name, const std::filesystem::path& value) {
    value.empty() ? unsetenv(name) : setenv(name, value.c_str(), 1);
}

std::filesystem::path programFile() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

int runProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
    std::vector<std::string> texts = arguments;
    texts.insert(texts.begin(), program.string());
    std::vector<char*> pointers;
    for (auto& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    if (posix_spawn(&child, program.c_str(), nullptr, nullptr, pointers.data(), environ) != 0)
        throw std::runtime_error("The program cannot be started: " + program.string());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

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

Json resourcesInUse() {
    using Folder = std::filesystem::directory_iterator;
    const auto sleeps = [](const std::filesystem::path& thread) {
        std::string facts;
        std::getline(std::ifstream(thread / "stat"), facts);
        return facts.find(") S ") != std::string::npos;
    };
    // A thread that is about to end still runs; one that is left behind sleeps.
    for (int look = 0; look < 1000 && std::count_if(Folder("/proc/self/task"), Folder(), std::not_fn(sleeps)) > 1;
         ++look)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const auto entries = [](const char* folder) { return std::distance(Folder(folder), Folder()); };
    return {{"threads", entries("/proc/self/task")}, {"handles", entries("/proc/self/fd")}};
}

void replaceShell(void*, std::function<int(const std::string&)> open) {
    devkit::EventLoop::instance().setShell(std::move(open));
}

}  // namespace nxhost
