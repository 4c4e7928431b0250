// What it takes the host to load the plug-in and to call it for the first time, next to a library without content that
// is loaded in turns with it. Prints the medians in microseconds as a line of JSON. Usage: load_time PLUGIN
// EMPTY_PLUGIN
#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::size_t rounds = 31;
using Values = std::array<double, rounds>;

HMODULE load(const char* file) {
    const auto module = LoadLibraryExA(file, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!module) {
        std::fprintf(stderr, "%s cannot be loaded: system error %lu.\n", file, GetLastError());
        std::exit(1);
    }
    return module;
}

/// Microseconds until the library has answered. It is unloaded afterwards.
double timeOf(const char* file) {
    const auto start = std::chrono::steady_clock::now();
    const auto module = load(file);
    const auto askUnload =
        reinterpret_cast<int (*)()>(reinterpret_cast<void*>(GetProcAddress(module, "ufusr_ask_unload")));
    if (!askUnload || askUnload() == 0) std::abort();
    const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
    FreeLibrary(module);
    return time.count();
}

double median(Values values) {
    std::sort(values.begin(), values.end());
    return values[rounds / 2];
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: load_time PLUGIN EMPTY_PLUGIN\n", stderr);
        return 2;
    }
    // The host has these already when it loads the plug-in.
    for (const char* library : {NXOPEN_LIBRARY, "ole32.dll", "shell32.dll", "user32.dll"}) load(library);
    timeOf(argv[1]);
    timeOf(argv[2]);
    Values plugin{};
    Values empty{};
    Values ratios{};
    for (std::size_t round = 0; round < rounds; ++round) {
        plugin[round] = timeOf(argv[1]);
        empty[round] = timeOf(argv[2]);
        ratios[round] = plugin[round] / empty[round];
    }
    std::printf(R"({"name": "load and first call", "value": %.0f, "baseline": %.0f, "ratio": %.2f})"
                "\n",
                median(plugin), median(empty), median(ratios));
}
