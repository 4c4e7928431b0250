#include "system.h"

#include "text.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#include <stdio.h>

#include <stdexcept>
#include <string>

namespace nxhost {

namespace {

// The text as CommandLineToArgvW reads it back.
std::wstring quoted(const std::wstring& text) {
    std::wstring result = L"\"";
    std::size_t backslashes = 0;
    for (const auto character : text) {
        if (character == L'"') result.append(backslashes + 1, L'\\');
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        result += character;
    }
    return result.append(backslashes, L'\\') + L'"';
}

}  // namespace

std::vector<std::string> commandLine(int, char**) {
    int count = 0;
    auto** texts = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int index = 1; index < count; ++index) arguments.push_back(utf8(texts[index]));
    LocalFree(texts);
    return arguments;
}

void prepareOutput() {
    _setmode(_fileno(stdout), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

void setEnvironment(const char* name, const std::filesystem::path& value) {
    const std::wstring wideName(name, name + std::char_traits<char>::length(name));
    SetEnvironmentVariableW(wideName.c_str(), value.empty() ? nullptr : value.c_str());
}

std::filesystem::path programFile() {
    std::wstring name(32768, L'\0');
    name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
    return name;
}

int runProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments) {
    auto line = quoted(program.wstring());
    for (const auto& argument : arguments) line += L' ' + quoted(pathOf(argument).wstring());
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    start.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION child{};
    // Wine fails to start one program in 2,000 where addresses are random.
    for (int attempt = 1;
         !CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &child);
         ++attempt) {
        const auto error = std::to_string(GetLastError());
        if (attempt == 4)
            throw std::runtime_error("The program cannot be started: " + utf8(program) + ", error " + error);
        Sleep(100);
    }
    WaitForSingleObject(child.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(child.hProcess, &status);
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
    // Statuses of a crash are far beyond those of programs, and would lose their upper half on the way out.
    return status > 255 ? 128 : static_cast<int>(status);
}

Json resourcesInUse() {
    return Json::object();
}

}  // namespace nxhost
