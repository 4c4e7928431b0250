// A screen with real windows, message boxes and timers.
#include "dialog_window_win.h"
#include "host_window_win.h"
#include "text.h"

#include <windows.h>

#include <commctrl.h>

#include <map>
#include <stdexcept>
#include <utility>

namespace nxhost {

namespace {

BOOL CALLBACK pressInBox(HWND window, LPARAM) {
    wchar_t type[8] = L"";
    GetClassNameW(window, type, 8);
    if (std::wstring(type) != L"#32770" || !IsWindowEnabled(window)) return TRUE;
    SendMessageW(FindWindowExW(window, nullptr, L"Button", nullptr), BM_CLICK, 0, 0);
    return FALSE;
}

// Presses the button of the innermost box: those beneath it are disabled.
void CALLBACK dismissBox(HWND, UINT, UINT_PTR, DWORD) {
    EnumThreadWindows(GetCurrentThreadId(), pressInBox, 0);
}

const std::map<devkit::BoxKind, UINT> icons{{devkit::BoxKind::error, MB_ICONERROR},
                                            {devkit::BoxKind::warning, MB_ICONWARNING},
                                            {devkit::BoxKind::information, MB_ICONINFORMATION},
                                            {devkit::BoxKind::question, MB_ICONQUESTION}};

LRESULT CALLBACK frameProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message != WM_CLOSE) return DefWindowProcW(window, message, first, second);
    *reinterpret_cast<bool*>(GetWindowLongPtrW(window, GWLP_USERDATA)) = true;
    return 0;
}

class WindowScreen : public Screen {
 public:
    WindowScreen(Transcript& transcript, std::vector<std::filesystem::path> bitmapFolders)
        : Screen(transcript), bitmapFolders_(std::move(bitmapFolders)) {}

    ~WindowScreen() override {
        if (frame_) DestroyWindow(frame_);
    }

    void showFrame() override {
        WNDCLASSW type{};
        type.lpfnWndProc = frameProcedure;
        type.lpszClassName = L"NxHostFrame";
        RegisterClassW(&type);
        frame_ = CreateWindowExW(0, type.lpszClassName, L"Stand-in host", WS_OVERLAPPEDWINDOW, 0, 0, 320, 80, nullptr,
                                 nullptr, nullptr, nullptr);
        SetWindowLongPtrW(frame_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&frameClosed_));
        ShowWindow(frame_, SW_SHOW);
        SetActiveWindow(frame_);
    }

    void useByHand(const std::string& title, ReplayContext& context) override { HostWindow(title, context).use(); }

    void changed(devkit::DialogData& dialog, devkit::BlockData&) override {
        if (auto* window = windowOf(&dialog)) static_cast<DialogWindow*>(window)->invalidate();
    }

    void press(devkit::BlockData& button) override {
        if (!current().press(button)) violation("The button " + button.id + " cannot be pressed in its window.");
    }

    void choose(devkit::BlockData& list, int entry) override {
        if (!current().choose(list, entry)) violation("The list " + list.id + " cannot be used in its window.");
    }

    void close() override { PostMessageW(current().handle(), WM_SYSCOMMAND, SC_CLOSE, 0); }

    void savePicture(const std::filesystem::path& file) override {
        current().refresh();
        pumpWithoutTimers();
        saveWindow(current().handle(), file);
    }

    void advance() override {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        pumpMessages();
    }

    std::chrono::milliseconds now() const override {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now().time_since_epoch());
    }

 protected:
    bool frameAskedToClose() override {
        pumpWithoutTimers();
        return std::exchange(frameClosed_, false);
    }

    std::unique_ptr<Window> open(devkit::DialogData& dialog) override {
        return std::make_unique<DialogWindow>(dialog, bitmapFolders_, topmost(),
                                              [this](devkit::BlockData& block) { update(block); });
    }

    void showBox(const std::string& title, devkit::BoxKind kind, const std::string& message) override {
        const auto timer = hostWindow ? 0 : SetTimer(nullptr, 0, static_cast<UINT>(boxTime.count()), dismissBox);
        MessageBoxW(topmost(), pathOf(message).c_str(), pathOf(title).c_str(), MB_OK | icons.at(kind));
        if (timer) KillTimer(nullptr, timer);
    }

 private:
    // The innermost window of this program, whichever program the desktop has in front.
    HWND topmost() {
        const auto host = hostWindow ? static_cast<HWND>(hostWindow) : frame_;
        const auto base = dialog() ? current().handle() : host;
        return base ? GetLastActivePopup(base) : nullptr;
    }

    DialogWindow& current() { return static_cast<DialogWindow&>(*windowOf(dialog())); }

    std::vector<std::filesystem::path> bitmapFolders_;
    HWND frame_ = nullptr;
    bool frameClosed_ = false;
};

// Without a desktop every top-level window fails.
void checkDesktop() {
    const auto window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    if (!window)
        throw std::runtime_error("Dialogs need a desktop: under Wine, start this program where DISPLAY names one.");
    DestroyWindow(window);
}

}  // namespace

std::unique_ptr<Screen> makeScreen(Transcript& transcript, const std::vector<std::filesystem::path>& bitmapFolders) {
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
    InitCommonControlsEx(&controls);
    checkDesktop();
    return std::make_unique<WindowScreen>(transcript, bitmapFolders);
}

}  // namespace nxhost
