// The built library as the host treats it: loaded, run, cleaned up and unloaded, again and again.
#include "library.h"

#ifdef _WIN32
#include <malloc.h>
#include <tlhelp32.h>
#endif

#include <devkit/call_interceptor.h>
#include <devkit/session.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/plugin_folder.h>
#include <support/scripted_host.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <future>
#include <iostream>

namespace {

namespace fs = std::filesystem;

/// What the process holds of the system.
using Held = std::array<std::ptrdiff_t, 4>;
constexpr const char* kinds[] = {"handles", "threads", "the place for a new drawing object", "allocated bytes"};

#ifdef _WIN32
// Wine counts neither handles nor drawing objects; a new object tells a free place in their table.
Held held() {
    Held counts{};
    DWORD flags = 0;
    for (std::uintptr_t handle = 4; handle < 0x8000; handle += 4)
        counts[0] += GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags);
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 thread{sizeof thread, 0, 0, 0, 0, 0, 0};
    for (BOOL found = Thread32First(snapshot, &thread); found; found = Thread32Next(snapshot, &thread))
        counts[1] += thread.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(snapshot);
    const HBRUSH brush = CreateSolidBrush(1);
    counts[2] = reinterpret_cast<std::uintptr_t>(brush) & 0xFFFF;
    DeleteObject(brush);
    for (_HEAPINFO entry{}; _heapwalk(&entry) == _HEAPOK;)
        if (entry._useflag == _USEDENTRY) counts[3] += static_cast<std::ptrdiff_t>(entry._size);
    return counts;
}
#else
// Without the memory: AddressSanitizer keeps what has been freed.
Held held() {
    const auto entries = [](const char* folder) {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    };
    return {entries("/proc/self/fd"), entries("/proc/self/task"), 0, 0};
}
#endif

void useOnce() {
    auto& interceptor = devkit::CallInterceptor::instance();
    interceptor.reset();
    const Plugin plugin(PIVRA_LIBRARY);
    plugin.run();
    plugin.run();
    EXPECT_EQ(plugin.askUnload(), 3);
    plugin.cleanUp();
    EXPECT_EQ(interceptor.counts().at("NXOpen::UI::CreateDialog").count, 2u);
    EXPECT_THAT(interceptor.violations(), testing::IsEmpty());
    EXPECT_EQ(interceptor.bracketDepth(), 0);
    EXPECT_THAT(devkit::Session::instance().helpContexts, testing::IsEmpty());
}

// Whether the module is loaded; adds no reference.
bool isLoaded(const char* file) {
#ifdef _WIN32
    return GetModuleHandleA(file) != nullptr;
#else
    void* module = dlopen(file, RTLD_NOW | RTLD_NOLOAD);
    if (module != nullptr) dlclose(module);
    return module != nullptr;
#endif
}

TEST(ThreadsOfALibrary, keepItLoadedUntilTheyEnd) {
    std::promise<void> end;
    std::promise<void> ended;
    const std::function<void()> task = [&] {
        end.get_future().wait();
        ended.set_value();
    };
    {
        const Library library(THREAD_LIBRARY);
        auto* start = library.find<void(const std::function<void()>&)>("start");
        ASSERT_NE(start, nullptr);
        start(task);
    }
    EXPECT_TRUE(isLoaded(THREAD_LIBRARY));
    end.set_value();
    ended.get_future().wait();
#ifdef _WIN32
    for (int attempt = 0; attempt < 500 && isLoaded(THREAD_LIBRARY); ++attempt) Sleep(10);
    EXPECT_FALSE(isLoaded(THREAD_LIBRARY));
#endif
}

TEST(BuiltLibrary, canBeLoadedRunAndUnloadedManyTimes) {
    const test_support::PluginFolder folder;
    test_support::ScriptedHost host;
    constexpr std::ptrdiff_t warmUp = 50;  // what the process keeps for good, it has from then on
    const auto rounds = static_cast<std::ptrdiff_t>(test_support::underLoad(100, 1'000));
    for (std::ptrdiff_t round = 0; round < warmUp; ++round) useOnce();
    const Held first = held();
    for (std::ptrdiff_t round = warmUp; round < rounds; ++round) useOnce();
    const Held last = held();
    constexpr std::ptrdiff_t log = 1'024;  // its file and latest second outlive every thread
#ifdef __MINGW32__
    // Left by its run time with every library that locks a mutex.
    const Held perRound{2, 0, 0, 75'610 + log};
#else
    const Held perRound{0, 0, 0, log};
#endif
    const Held slack{2, 0, 2, 8'192};
    for (std::size_t kind = 0; kind < last.size(); ++kind) {
        std::cout << "load: " << kinds[kind] << " after " << warmUp << " rounds " << first[kind] << ", after " << rounds
                  << " " << last[kind] << "\n";
        EXPECT_LE(last[kind] - first[kind], perRound[kind] * (rounds - warmUp) + slack[kind]) << kinds[kind];
    }
}

}  // namespace
