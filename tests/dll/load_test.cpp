// The built library as the host treats it: loaded, run, cleaned up and unloaded, again and again.
#include <devkit/gate.h>
#include <devkit/session.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/plugin_folder.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <filesystem>
#include <functional>
#include <future>

namespace {

namespace fs = std::filesystem;

class Library {
 public:
#ifdef _WIN32
    explicit Library(const fs::path& file) : module_(LoadLibraryW(file.c_str())) {}
    ~Library() {
        FreeLibrary(module_);
    }
    template <typename Function>
    Function* find(const char* name) const {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }

 private:
    HMODULE module_;
#else
    explicit Library(const fs::path& file) : module_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {}
    ~Library() {
        dlclose(module_);
    }
    template <typename Function>
    Function* find(const char* name) const {
        return reinterpret_cast<Function*>(dlsym(module_, name));
    }

 private:
    void* module_;
#endif
};

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
    const Library library(PIVRA_LIBRARY);
    auto* run = library.find<void(char*, int*, int)>("ufusr");
    auto* askUnload = library.find<int()>("ufusr_ask_unload");
    auto* cleanUp = library.find<void()>("ufusr_cleanup");
    ASSERT_TRUE(run != nullptr && askUnload != nullptr && cleanUp != nullptr);
    char parameter[1] = "";
    int result = 0;
    run(parameter, &result, 0);
    run(parameter, &result, 0);
    EXPECT_EQ(askUnload(), 3);
    cleanUp();
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
    auto& gate = devkit::Gate::instance();
    gate.reset();
    auto& session = devkit::Session::instance();
    session.reset();
    session.applicationFolders = {PIVRA_APPLICATION_FOLDER};
    useOnce();  // what the process keeps for good, it has from now on
    const auto before = held();
    constexpr std::size_t rounds = 40;
    for (std::size_t round = 0; round < rounds; ++round) useOnce();
    EXPECT_LE(held(), before + 2);
    EXPECT_EQ(gate.counts().at("NXOpen::UI::CreateDialog"), 2 * (rounds + 1));
    EXPECT_THAT(gate.violations(), testing::IsEmpty());
    EXPECT_EQ(gate.bracketDepth(), 0);
    EXPECT_THAT(session.helpContexts, testing::IsEmpty());
}

}  // namespace
