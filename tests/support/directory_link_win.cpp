#include "directory_link.h"

#include <windows.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>

namespace test_support {
namespace fs = std::filesystem;

namespace {

// Wine makes no junctions, but shows links of the system below as reparse points and starts that system's programs.
bool underWine() {
    return fs::exists(L"Z:\\bin\\ln");
}

bool isThere(const fs::path& link) {
    return GetFileAttributesW(link.c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// Runs `command` in `folder` until `link` exists or not, as wished: the other system's programs are not waited for.
void run(std::wstring command, const fs::path& folder, const fs::path& link, bool wished) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, folder.c_str(),
                        &start, &process)) {
        return;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    for (int attempt = 0; attempt < 500 && isThere(link) != wished; ++attempt) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

}  // namespace

DirectoryLink::DirectoryLink(const fs::path& link, const fs::path& target) : link_(link) {
    const auto relative = target.lexically_relative(link.parent_path());
    const auto name = link.filename().native();
    const auto command = underWine() ? L"Z:\\bin\\ln -s " + relative.generic_wstring() + L' ' + name
                                     : L"cmd /c mklink /J " + name + L' ' + relative.native();
    run(command, link.parent_path(), link, true);
    if (!isThere(link)) throw std::runtime_error("No link between directories could be made.");
}

DirectoryLink::~DirectoryLink() {
    if (!isThere(link_)) return;
    if (underWine()) {
        run(L"Z:\\bin\\rm " + link_.filename().native(), link_.parent_path(), link_, false);
    } else {
        RemoveDirectoryW(link_.c_str());
    }
}

}  // namespace test_support
