#include "system.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace nxhost {

namespace {

template <typename Type>
Type* at(void* module, DWORD offset) {
    return reinterpret_cast<Type*>(static_cast<char*>(module) + offset);
}

const IMAGE_DATA_DIRECTORY& directory(void* module, int number) {
    const auto* header = at<IMAGE_NT_HEADERS64>(module, static_cast<IMAGE_DOS_HEADER*>(module)->e_lfanew);
    return header->OptionalHeader.DataDirectory[number];
}

// The place in the module's import table that holds the address of `function`, or null.
void** importOf(void* module, const char* library, const char* function) {
    const auto& imports = directory(module, IMAGE_DIRECTORY_ENTRY_IMPORT);
    if (!imports.Size) return nullptr;
    for (auto* entry = at<IMAGE_IMPORT_DESCRIPTOR>(module, imports.VirtualAddress); entry->Name; ++entry) {
        if (lstrcmpiA(at<char>(module, entry->Name), library) != 0) continue;
        auto* name = at<IMAGE_THUNK_DATA64>(module, entry->OriginalFirstThunk);
        auto* address = at<IMAGE_THUNK_DATA64>(module, entry->FirstThunk);
        for (; name->u1.AddressOfData; ++name, ++address) {
            if (IMAGE_SNAP_BY_ORDINAL64(name->u1.Ordinal)) continue;
            const auto* named = at<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(name->u1.AddressOfData));
            if (std::strcmp(named->Name, function) == 0) return reinterpret_cast<void**>(&address->u1.Function);
        }
    }
    return nullptr;
}

std::function<int(const std::string&)> shell;

HINSTANCE WINAPI openThroughShell(HWND, LPCSTR verb, LPCSTR file, LPCSTR, LPCSTR, INT) {
    const bool opens = verb && file && std::strcmp(verb, "open") == 0;
    return reinterpret_cast<HINSTANCE>(static_cast<INT_PTR>(opens ? shell(file) : SE_ERR_NOASSOC));
}

}  // namespace

void* loadModule(const std::filesystem::path& file) {
    const auto module = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!module)
        throw std::runtime_error("The module cannot be loaded: system error " + std::to_string(GetLastError()) + ".");
    return module;
}

void* symbolOf(void* module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

std::vector<std::string> namesOf(void* module, const std::vector<std::string>&) {
    std::vector<std::string> names;
    const auto& place = directory(module, IMAGE_DIRECTORY_ENTRY_EXPORT);
    if (!place.Size) return names;
    const auto* table = at<IMAGE_EXPORT_DIRECTORY>(module, place.VirtualAddress);
    const auto* offsets = at<DWORD>(module, table->AddressOfNames);
    for (DWORD number = 0; number < table->NumberOfNames; ++number)
        names.emplace_back(at<char>(module, offsets[number]));
    std::sort(names.begin(), names.end());
    return names;
}

// Only the copy of the table in this process's memory changes.
void replaceShell(void* module, std::function<int(const std::string&)> open) {
    auto** place = importOf(module, "shell32.dll", "ShellExecuteA");
    if (!place) return;  // the module does not use the shell
    shell = std::move(open);
    DWORD before = 0;
    VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before);
    *place = reinterpret_cast<void*>(&openThroughShell);
    VirtualProtect(place, sizeof *place, before, &before);
}

}  // namespace nxhost
