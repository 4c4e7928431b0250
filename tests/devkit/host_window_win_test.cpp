// The stand-in host's own window, used from another process as a person does.
#include <gtest/gtest.h>
#include <host_window_ids.h>

#include <windows.h>

#include <filesystem>
#include <functional>
#include <string>

namespace {

constexpr const wchar_t* title = L"Pivra stand-in host - Native parts, one of them with unsaved changes";

bool comesTrue(const std::function<bool()>& condition) {
    for (int attempt = 0; attempt < 600; ++attempt) {
        if (condition()) return true;
        Sleep(50);
    }
    return false;
}

/// The host with its window; ended with the test at the latest.
class Host {
 public:
    explicit Host(const std::filesystem::path& session) {
        const auto program = std::filesystem::absolute(NXHOST_PROGRAM).make_preferred();
        auto line = L"\"" + program.wstring() + L"\" --interactive \"" + session.wstring() + L"\"";
        STARTUPINFOW start{};
        start.cb = sizeof start;
        CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process_);
        comesTrue([&] { return (window_ = FindWindowW(nullptr, title)) != nullptr; });
    }
    ~Host() {
        TerminateProcess(process_.hProcess, 1);
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
    }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    HWND window() const { return window_; }
    /// The plug-in's dialog that is open above the window, or the window.
    HWND front() const { return GetLastActivePopup(window_); }
    void press(int button) const { PostMessageW(window_, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), 0); }

    std::wstring log() const {
        std::wstring text(65536, L'\0');
        const auto length =
            SendMessageW(GetDlgItem(window_, ID_LOG), WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
        text.resize(static_cast<std::size_t>(length));
        return text;
    }

    /// Its exit status, or that it is still there.
    DWORD status() const {
        WaitForSingleObject(process_.hProcess, 30000);
        DWORD status = STILL_ACTIVE;
        GetExitCodeProcess(process_.hProcess, &status);
        return status;
    }

 private:
    PROCESS_INFORMATION process_{};
    HWND window_ = nullptr;
};

void close(HWND window) {
    PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
}

TEST(HostWindow, runsThePlugInByHand) {
    const Host host(std::filesystem::path(DEVKIT_SESSIONS) / "native.json");
    ASSERT_NE(host.window(), nullptr);
    ASSERT_NE(IsWindowEnabled(GetDlgItem(host.window(), ID_RUN)), FALSE);

    host.press(ID_RUN);
    ASSERT_TRUE(comesTrue([&] { return host.front() != host.window(); }));
    EXPECT_EQ(IsWindowEnabled(GetDlgItem(host.window(), ID_RUN)), FALSE);
    EXPECT_EQ(IsWindowEnabled(host.window()), FALSE);
    close(host.window());  // not while the plug-in runs
    EXPECT_TRUE(comesTrue([&] { return host.log().find(L"Dialog shown: dialog=start.dlx") != std::wstring::npos; }));

    close(host.front());
    ASSERT_TRUE(comesTrue([&] { return IsWindowEnabled(GetDlgItem(host.window(), ID_RUN)) != FALSE; }));
    EXPECT_NE(host.log().find(L"Run ended"), std::wstring::npos);

    close(host.window());
    EXPECT_EQ(host.status(), 0u);
}

}  // namespace
