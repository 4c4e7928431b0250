// The built library as the host treats it: loaded, run, cleaned up and unloaded, again and again.
#include "library.h"

#include <devkit/call_interceptor.h>
#include <devkit/session.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/plugin_folder.h>
#include <support/scripted_host.h>

#include <filesystem>
#include <functional>
#include <future>

namespace {

namespace fs = std::filesystem;

/// What the process holds of the system: its handles and threads.
std::size_t held() {
#ifdef _WIN32
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    return handles;
#else
    const auto entries = [](const char* folder) {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    };
    return entries("/proc/self/fd") + entries("/proc/self/task");
#endif
}

void useOnce() {
    const Plugin plugin(PIVRA_LIBRARY);
    plugin.run();
    plugin.run();
    EXPECT_EQ(plugin.askUnload(), 3);
    plugin.cleanUp();
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
    auto& interceptor = devkit::CallInterceptor::instance();
    useOnce();  // what the process keeps for good, it has from now on
    const auto before = held();
    constexpr std::size_t rounds = 40;
    for (std::size_t round = 0; round < rounds; ++round) useOnce();
    EXPECT_LE(held(), before + 2);
    EXPECT_EQ(interceptor.counts().at("NXOpen::UI::CreateDialog").count, 2 * (rounds + 1));
    EXPECT_THAT(interceptor.violations(), testing::IsEmpty());
    EXPECT_EQ(interceptor.bracketDepth(), 0);
    EXPECT_THAT(devkit::Session::instance().helpContexts, testing::IsEmpty());
}

}  // namespace
