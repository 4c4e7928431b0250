// The stand-in host's own window, used from another process as a person does.
#include <gtest/gtest.h>
#include <host_window_ids.h>

#include <windows.h>

#include <filesystem>
#include <functional>

namespace {

constexpr const wchar_t* title = L"Pivra stand-in host - Native parts, one of them with unsaved changes";

bool comesTrue(const std::function<bool()>& condition) {
    for (int attempt = 0; attempt < 600; ++attempt) {
        if (condition()) return true;
        Sleep(50);
    }
    return false;
}

/// Ended with the test at the latest.
class HostWindow : public testing::Test {
 protected:
    void SetUp() override {
        const auto program = std::filesystem::absolute(NXHOST_PROGRAM).make_preferred();
        const auto session = std::filesystem::path(DEVKIT_SESSIONS) / "native.json";
        auto line = L"\"" + program.wstring() + L"\" --interactive \"" + session.wstring() + L"\"";
        STARTUPINFOW start{};
        start.cb = sizeof start;
        CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process_);
        ASSERT_TRUE(comesTrue([&] { return (window_ = FindWindowW(nullptr, title)) != nullptr; }));
    }
    void TearDown() override {
        TerminateProcess(process_.hProcess, 1);
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
    }

    bool canRun() const { return IsWindowEnabled(GetDlgItem(window_, ID_RUN)) != FALSE; }
    void close(HWND window) const { PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0); }

    PROCESS_INFORMATION process_{};
    HWND window_ = nullptr;
};

TEST_F(HostWindow, runsThePlugInByHand) {
    ASSERT_TRUE(canRun());
    PostMessageW(window_, WM_COMMAND, MAKEWPARAM(ID_RUN, BN_CLICKED), 0);
    ASSERT_TRUE(comesTrue([&] { return GetLastActivePopup(window_) != window_; }));
    EXPECT_FALSE(canRun());
    close(window_);  // not while the plug-in runs

    close(GetLastActivePopup(window_));
    ASSERT_TRUE(comesTrue([&] { return canRun(); }));
    EXPECT_GT(SendDlgItemMessageW(window_, ID_LOG, WM_GETTEXTLENGTH, 0, 0), 0);

    close(window_);
    ASSERT_EQ(WaitForSingleObject(process_.hProcess, 30000), WAIT_OBJECT_0);
    DWORD status = 1;
    GetExitCodeProcess(process_.hProcess, &status);
    EXPECT_EQ(status, 0u);
}

}  // namespace
