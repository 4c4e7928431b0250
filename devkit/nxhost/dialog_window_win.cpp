#include "dialog_window_win.h"

#include "text.h"

#include <windows.h>

#include <commctrl.h>

#include <stdexcept>

namespace nxhost {

namespace {

constexpr int firstNumber = 100;
constexpr DWORD windowStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr int clientWidth = 480;

std::wstring wide(const std::string& text) {
    return pathOf(text).wstring();
}

std::string typeOf(const devkit::BlockData& block) {
    return lookOf(block)["type"].get<std::string>();
}

void setText(HWND control, const std::wstring& text) {
    std::wstring now(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1, L'\0');
    now.resize(static_cast<std::size_t>(GetWindowTextW(control, now.data(), static_cast<int>(now.size()))));
    if (now != text) SetWindowTextW(control, text.c_str());
}

// A label's bitmap replaces its text unless the layout asks for both; a wrapped text replaces the bitmap.
bool showsPicture(const devkit::BlockData& block) {
    return !devkit::textProperty(block, "Bitmap").empty() && !devkit::propertyOr(block, "WordWrap", false);
}

bool showsText(const devkit::BlockData& block) {
    return !showsPicture(block) || devkit::propertyOr(block, "DisplayBitmapLabel", false);
}

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_NCCREATE)
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(second)->lpCreateParams));
    auto* dialog = reinterpret_cast<DialogWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!dialog || (message != WM_CLOSE && message != WM_COMMAND))
        return DefWindowProcW(window, message, first, second);
    dialog->receive(message, first);
    return 0;
}

void dispatch(MSG& message) {
    const auto root = message.hwnd ? GetAncestor(message.hwnd, GA_ROOT) : nullptr;
    if (root && IsDialogMessageW(root, &message)) return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

}  // namespace

void pumpMessages() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) dispatch(message);
}

void pumpWithoutTimers() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, WM_TIMER - 1, PM_REMOVE) ||
           PeekMessageW(&message, nullptr, WM_TIMER + 1, 0xFFFFFFFF, PM_REMOVE))
        dispatch(message);
}

DialogWindow::DialogWindow(devkit::DialogData& dialog, const std::vector<std::filesystem::path>& bitmapFolders,
                           HWND owner, std::function<void(devkit::BlockData&)> onUpdate)
    : dialog_(dialog), bitmapFolders_(bitmapFolders), owner_(owner), onUpdate_(std::move(onUpdate)) {
    WNDCLASSW type{};
    type.lpfnWndProc = procedure;
    type.lpszClassName = L"NxHostDialog";
    type.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    type.hbrBackground = GetSysColorBrush(COLOR_3DFACE);
    RegisterClassW(&type);
    font_ = CreateFontW(-12, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0, CLEARTYPE_QUALITY, 0,
                        L"WenQuanYi Micro Hei");
    RECT above{};
    if (owner) GetWindowRect(owner, &above);
    window_ =
        CreateWindowExW(WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT, type.lpszClassName, wide(dialog.title).c_str(),
                        windowStyle, above.left + 80, above.top + 60, clientWidth, 200, owner, nullptr, nullptr, this);
    if (!window_) throw std::runtime_error("The dialog's window cannot be made.");
    tooltips_ = CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0,
                                window_, nullptr, nullptr, nullptr);
    SendMessageW(tooltips_, TTM_SETMAXTIPWIDTH, 0, clientWidth);
    for (const auto& block : dialog.top.children) makeControls(*block);
    refresh();
    if (owner_) EnableWindow(owner_, FALSE);
    ShowWindow(window_, SW_SHOW);
    SetActiveWindow(window_);
    if (owner_) SetFocus(GetNextDlgTabItem(window_, nullptr, FALSE));
}

DialogWindow::~DialogWindow() {
    // The owner first, so that it and no other program becomes active.
    if (owner_) EnableWindow(owner_, TRUE);
    DestroyWindow(window_);
    if (owner_) SetActiveWindow(owner_);
    for (const auto& [block, controls] : controls_)
        if (controls.bitmap) DeleteObject(controls.bitmap);
    DeleteObject(font_);
}

void DialogWindow::receive(unsigned message, std::uintptr_t first) {
    if (message == WM_CLOSE) closed_ = true;
    if (message == WM_COMMAND) act(LOWORD(first), HIWORD(first));
}

void DialogWindow::act(int number, int notification) {
    const auto index = static_cast<std::size_t>(number - firstNumber);
    if (number < firstNumber || index >= blocks_.size()) return;
    auto& block = *blocks_[index];
    const auto type = typeOf(block);
    if (type == "button" && notification == BN_CLICKED) onUpdate_(block);
    if (type != "enum" || notification != CBN_SELCHANGE) return;
    block.properties["Value"] = static_cast<int>(SendMessageW(controls_[&block].field, CB_GETCURSEL, 0, 0));
    onUpdate_(block);
}

bool DialogWindow::closed() {
    refresh();
    pumpWithoutTimers();
    return closed_;
}

bool DialogWindow::press(const devkit::BlockData& button) {
    refresh();
    const auto control = controls_[&button].field;
    if (!IsWindowVisible(control) || !IsWindowEnabled(control)) return false;
    // As a click does, whichever program the desktop has in front.
    SetActiveWindow(window_);
    SendMessageW(control, BM_CLICK, 0, 0);
    return true;
}

bool DialogWindow::choose(const devkit::BlockData& list, int entry) {
    refresh();
    const auto control = controls_[&list].field;
    if (!IsWindowVisible(control) || !IsWindowEnabled(control)) return false;
    SendMessageW(control, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
    SendMessageW(window_, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(control));
    return true;
}

HWND DialogWindow::makeControl(const wchar_t* type, unsigned style) {
    const auto number = static_cast<INT_PTR>(firstNumber + blocks_.size() - 1);
    const auto control = CreateWindowExW(0, type, L"", WS_CHILD | style, 0, 0, 10, 10, window_,
                                         reinterpret_cast<HMENU>(number), nullptr, nullptr);
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    return control;
}

void DialogWindow::makeControls(devkit::BlockData& block) {
    blocks_.push_back(&block);
    auto& controls = controls_[&block];
    const auto type = typeOf(block);
    if (type == "group") {
        controls.field = makeControl(L"BUTTON", BS_GROUPBOX);
    } else if (type == "button") {
        controls.field = makeControl(L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP);
    } else if (type == "separator") {
        controls.field = makeControl(L"STATIC", SS_ETCHEDHORZ);
    } else {
        controls.picture = makeControl(L"STATIC", SS_BITMAP);
        controls.text = makeControl(L"STATIC", SS_NOPREFIX | SS_NOTIFY);
        if (type == "enum") controls.field = makeControl(L"COMBOBOX", CBS_DROPDOWNLIST | WS_TABSTOP | WS_VSCROLL);
    }
    for (const auto& child : block.children) makeControls(*child);
}

void DialogWindow::refresh() {
    if (!stale_) return;
    stale_ = false;
    for (const auto& child : dialog_.top.children) sync(*child, true);
    RECT frame{0, 0, clientWidth, placeChildren(dialog_.top, 10, 8, clientWidth - 20) + 16};
    AdjustWindowRectEx(&frame, windowStyle, FALSE, WS_EX_DLGMODALFRAME);
    SetWindowPos(window_, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

// Updates the controls of a block, and of the blocks within it, from their properties.
void DialogWindow::sync(const devkit::BlockData& block, bool shown) {
    shown = shown && devkit::propertyOr(block, "Show", true);
    auto& controls = controls_[&block];
    auto label = wide(devkit::textProperty(block, "Label"));
    // A frame's line runs up to its title.
    if (typeOf(block) == "group" && !label.empty()) label = L" " + label + L" ";
    const bool isList = typeOf(block) == "enum";
    if (controls.picture) syncPicture(block, controls);
    if (isList) syncList(block, controls);
    setText(controls.text ? controls.text : controls.field, label);
    if (controls.text) syncTooltip(block, controls);
    const bool hasText = isList ? devkit::propertyOr(block, "LabelVisibility", true) : showsText(block);
    if (controls.picture) ShowWindow(controls.picture, shown && controls.bitmap ? SW_SHOWNA : SW_HIDE);
    if (controls.text) ShowWindow(controls.text, shown && hasText ? SW_SHOWNA : SW_HIDE);
    if (controls.field) ShowWindow(controls.field, shown ? SW_SHOWNA : SW_HIDE);
    if (controls.field) EnableWindow(controls.field, lookOf(block)["enable"].get<bool>());
    for (const auto& child : block.children) sync(*child, shown);
}

void DialogWindow::syncPicture(const devkit::BlockData& block, Controls& controls) {
    const auto name = showsPicture(block) ? devkit::textProperty(block, "Bitmap") : "";
    if (name == controls.bitmapName) return;
    const auto before = controls.bitmap;
    controls.bitmapName = name;
    controls.bitmap = nullptr;
    for (const auto& folder : bitmapFolders_)
        if (!controls.bitmap && !name.empty()) controls.bitmap = loadBitmap(folder / pathOf(name));
    SendMessageW(controls.picture, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(controls.bitmap));
    if (before) DeleteObject(before);
}

void DialogWindow::syncList(const devkit::BlockData& block, Controls& controls) {
    if (controls.members != block.members) {
        controls.members = block.members;
        SendMessageW(controls.field, CB_RESETCONTENT, 0, 0);
        for (const auto& member : block.members)
            SendMessageW(controls.field, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide(member).c_str()));
    }
    SendMessageW(controls.field, CB_SETCURSEL, static_cast<WPARAM>(devkit::propertyOr(block, "Value", -1)), 0);
}

void DialogWindow::syncTooltip(const devkit::BlockData& block, const Controls& controls) {
    auto text = wide(devkit::textProperty(block, "BalloonTooltipText"));
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = window_;
    tool.uId = reinterpret_cast<UINT_PTR>(controls.text);
    SendMessageW(tooltips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    tool.lpszText = text.data();
    if (!text.empty()) SendMessageW(tooltips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace nxhost
