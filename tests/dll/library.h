// A library as the host loads it.
#pragma once

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <filesystem>

class Library {
 public:
#ifdef _WIN32
    explicit Library(const std::filesystem::path& file) : module_(LoadLibraryW(file.c_str())) {}
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
    explicit Library(const std::filesystem::path& file) : module_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {}
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

/// The plug-in's entry points.
struct Plugin : Library {
    using Library::Library;

    void run() const {
        char parameter[1] = "";
        int result = 0;
        find<void(char*, int*, int)>("ufusr")(parameter, &result, 0);
    }
    int askUnload() const { return find<int()>("ufusr_ask_unload")(); }
    void cleanUp() const { find<void()>("ufusr_cleanup")(); }
};
