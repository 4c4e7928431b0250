#include "host_window_win.h"

#include "host_window_ids.h"
#include "steps.h"
#include "system.h"
#include "text.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <array>
#include <boost/algorithm/string/replace.hpp>
#include <cctype>
#include <regex>
#include <stdexcept>

namespace nxhost {

namespace {

constexpr UINT followEvery = 200;  // milliseconds

struct Application {
    const wchar_t* name;
    int module;
};
constexpr std::array<Application, 4> applications{{{L"None", 0}, {L"Gateway", 2}, {L"Modeling", 3}, {L"Drafting", 1}}};

constexpr std::array<const wchar_t*, 4> columns{L"Part", L"Kind", L"File or item", L"State"};

// Bytes that are no UTF-8 become replacement characters: an event may hold any, and must not fail the plug-in's call.
std::wstring wide(const std::string& text) {
    const auto size = static_cast<int>(text.size());
    std::wstring result(text.size(), L'\0');
    result.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, result.data(), size)));
    return result;
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const auto& word : words) text += (text.empty() ? "" : ", ") + word;
    return text;
}

std::string valueText(const Event& value) {
    return value.is_string() ? value.get<std::string>() : value.dump(-1, ' ', false, Event::error_handler_t::replace);
}

// The event in one line: "Part saved: part=plate, saved=true".
std::string lineOf(const Event& event) {
    const auto& kind = event["event"];
    if (kind == "step") return "> " + valueText(event["step"]);
    if (kind == "log") return "    " + valueText(event["level"]) + " " + valueText(event["text"]);
    auto title = boost::replace_all_copy(kind.get<std::string>(), "-", " ");
    title.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(title.front())));
    std::vector<std::string> members;
    for (const auto& [name, value] : event.items())
        if (name != "event" && name != "blocks") members.push_back(name + "=" + valueText(value));
    return title + (members.empty() ? "" : ": ") + joined(members);
}

// What the plug-in takes the part for: "native, assembly, legacy".
std::string kindOf(const devkit::PartData& part) {
    std::vector<std::string> words{part.managed ? "managed" : "native"};
    if (!part.components.empty()) words.push_back("assembly");
    if (!part.sheets.empty()) words.push_back("drawing sheets");
    if (part.familyInstance || part.familyTemplate || part.familyMember) words.push_back("part family");
    if (!std::regex_match(part.uniqueIdentifier, uuidPattern())) words.push_back("legacy");
    std::error_code unreachable;
    if (!part.managed && !std::filesystem::exists(pathOf(part.fullPath), unreachable)) words.push_back("not saved");
    return joined(words);
}

// Its item number and revision in Teamcenter, or the name of its file.
std::string fileOf(const devkit::PartData& part) {
    return part.managed ? part.managed->number + "/" + part.managed->revision : utf8(pathOf(part.fullPath).filename());
}

std::string stateOf(const devkit::PartData& part) {
    std::vector<std::string> words;
    if (part.name == devkit::Session::instance().displayed()) words.push_back("displayed");
    if (part.modified) words.push_back("modified");
    return joined(words);
}

INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_INITDIALOG) SetWindowLongPtrW(window, DWLP_USER, second);
    auto* host = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, DWLP_USER));
    return host ? host->receive(window, message, first, second) : FALSE;
}

HFONT monospaced(HFONT like) {
    LOGFONTW font{};
    GetObjectW(like, sizeof font, &font);
    lstrcpyW(font.lfFaceName, L"WenQuanYi Micro Hei Mono");
    font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    return CreateFontIndirectW(&font);
}

LRESULT colourOfLog(HDC device) {
    SetTextColor(device, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(device, GetSysColor(COLOR_WINDOW));
    return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
}

}  // namespace

HostWindow::~HostWindow() {
    if (logFont_) DeleteObject(logFont_);
}

void HostWindow::use() {
    // Under Wine it would reach the browser, where no such folder is.
    setEnvironment("TMPDIR", {});
    context_.plugin.onOpen([this](const std::string& address) { return openInBrowser(address); });
    context_.transcript.onEvent = [this](const Event& event) { log(event); };
    const auto result =
        DialogBoxParamW(GetModuleHandleW(nullptr), L"HOST_WINDOW", nullptr, procedure, reinterpret_cast<LPARAM>(this));
    context_.transcript.onEvent = nullptr;
    context_.screen.hostWindow = window_ = nullptr;
    if (result == -1) throw std::runtime_error("The host's window cannot be made.");
}

int HostWindow::openInBrowser(const std::string& address) {
    constexpr int lastFailure = 32;  // of the shell
    const int noted = context_.browser.open(address);
    if (noted <= lastFailure) return noted;
    const auto result = ShellExecuteW(nullptr, L"open", pathOf(address).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return static_cast<int>(reinterpret_cast<INT_PTR>(result));
}

// The person may have to copy an address, of which the transcript keeps no secrets.
void HostWindow::log(const Event& event) {
    const auto line = event["event"] == "opened" ? "Opened: " + context_.browser.address(0) : lineOf(event);
    addLine(boost::replace_all_copy(line, "\n", " "));
}

void HostWindow::addLine(const std::string& line) {
    const auto log = control(ID_LOG);
    const auto end = static_cast<WPARAM>(GetWindowTextLengthW(log));
    SendMessageW(log, EM_SETSEL, end, static_cast<LPARAM>(end));
    SendMessageW(log, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(wide(line + "\r\n").c_str()));
}

std::intptr_t HostWindow::receive(HWND window, unsigned message, std::uintptr_t first, std::intptr_t second) {
    switch (message) {
        case WM_INITDIALOG:
            window_ = window;
            start();
            return TRUE;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(second)->ptMinTrackSize = {frame_.width, frame_.height};
            return TRUE;
        case WM_SIZE:
            if (first != SIZE_MINIMIZED) placeControls();
            return TRUE;
        case WM_TIMER:
            attempt([this] { followEvents(); });
            return TRUE;
        case WM_COMMAND:
            act(LOWORD(first), HIWORD(first));
            return TRUE;
        case WM_NOTIFY:
            if (first == ID_PARTS && reinterpret_cast<NMHDR*>(second)->code == NM_DBLCLK) act(ID_DISPLAY, BN_CLICKED);
            return TRUE;
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<HWND>(second) == control(ID_LOG) ? colourOfLog(reinterpret_cast<HDC>(first)) : 0;
        case WM_CLOSE:
            // A field of several lines sends it for the Escape key.
            if (!context_.running && GetKeyState(VK_ESCAPE) >= 0) EndDialog(window, 0);
            return TRUE;
        default:
            return FALSE;
    }
}

void HostWindow::start() {
    context_.screen.hostWindow = window_;
    SetWindowTextW(window_, wide("Pivra stand-in host - " + title_).c_str());
    logFont_ = monospaced(reinterpret_cast<HFONT>(SendMessageW(window_, WM_GETFONT, 0, 0)));
    SendMessageW(control(ID_LOG), WM_SETFONT, reinterpret_cast<WPARAM>(logFont_), FALSE);
    SendMessageW(control(ID_LOG), EM_LIMITTEXT, 0, 0);
    for (const auto& application : applications) {
        const auto list = control(ID_APPLICATION);
        SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(application.name));
        if (application.module == devkit::Session::instance().applicationModule)
            SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(&application - applications.data()), 0);
    }
    makeParts();
    rememberPlaces();
    SetTimer(window_, 1, followEvery, nullptr);
}

void HostWindow::makeParts() {
    const auto list = control(ID_PARTS);
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT;
    for (std::size_t index = 0; index < columns.size(); ++index) {
        column.pszText = const_cast<wchar_t*>(columns[index]);
        SendMessageW(list, LVM_INSERTCOLUMNW, index, reinterpret_cast<LPARAM>(&column));
    }
    LVITEMW row{};
    row.mask = LVIF_STATE;
    row.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    for (const auto& part : devkit::Session::instance().parts()) {
        row.state = part.name == devkit::Session::instance().displayed() ? row.stateMask : 0;
        SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&row));
        ++row.iItem;
    }
    showParts();
    fitColumns(0);
}

void HostWindow::showParts() {
    int row = 0;
    for (const auto& part : devkit::Session::instance().parts()) {
        setCell(row, 0, part.name);
        setCell(row, 1, kindOf(part));
        setCell(row, 2, fileOf(part));
        setCell(row, 3, stateOf(part));
        ++row;
    }
}

void HostWindow::setCell(int row, int column, const std::string& text) {
    auto wideText = wide(text);
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = wideText.data();
    SendMessageW(control(ID_PARTS), LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

// As wide as their content and a gap, the last one to the list's edge.
void HostWindow::fitColumns(std::size_t first) {
    const auto list = control(ID_PARTS);
    const auto gap = SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(L"MM"));
    for (auto index = first; index < columns.size(); ++index) {
        SendMessageW(list, LVM_SETCOLUMNWIDTH, index, LVSCW_AUTOSIZE_USEHEADER);
        const auto width = SendMessageW(list, LVM_GETCOLUMNWIDTH, index, 0);
        if (index + 1 < columns.size()) SendMessageW(list, LVM_SETCOLUMNWIDTH, index, width + gap);
    }
}

void HostWindow::rememberPlaces() {
    RECT frame{}, client{};
    GetWindowRect(window_, &frame);
    GetClientRect(window_, &client);
    frame_ = {static_cast<int>(frame.right - frame.left), static_cast<int>(frame.bottom - frame.top)};
    client_ = {static_cast<int>(client.right), static_cast<int>(client.bottom)};
    anchored_ = {{ID_PARTS, false, true, false}, {ID_RUN, true, false, false}, {ID_LOG, false, true, true}};
    for (auto& anchored : anchored_) {
        RECT place{};
        GetWindowRect(control(anchored.control), &place);
        MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&place), 2);
        anchored.x = place.left;
        anchored.y = place.top;
        anchored.width = place.right - place.left;
        anchored.height = place.bottom - place.top;
    }
}

void HostWindow::placeControls() {
    RECT client{};
    GetClientRect(window_, &client);
    const int wider = client.right - client_.width;
    const int higher = client.bottom - client_.height;
    for (const auto& anchored : anchored_)
        MoveWindow(control(anchored.control), anchored.x + wider * anchored.moves, anchored.y,
                   anchored.width + wider * anchored.wider, anchored.height + higher * anchored.higher, FALSE);
    fitColumns(columns.size() - 1);
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void HostWindow::act(int id, int notification) {
    const auto* part = selected();
    if (id == ID_RUN && notification == BN_CLICKED) run();
    if (id == ID_DISPLAY && notification == BN_CLICKED && part) performStep({{"display", part->name}});
    if (id == ID_MODIFIED && notification == BN_CLICKED && part)
        performStep({{"edit", {{"name", part->name}, {"modified", !part->modified}}}});
    if (id != ID_APPLICATION || notification != CBN_SELCHANGE) return;
    const auto chosen = SendMessageW(control(ID_APPLICATION), CB_GETCURSEL, 0, 0);
    performStep({{"application", applications.at(static_cast<std::size_t>(chosen)).module}});
}

void HostWindow::run() {
    constexpr std::array<int, 4> usable{ID_DISPLAY, ID_MODIFIED, ID_APPLICATION, ID_RUN};
    for (const int id : usable) EnableWindow(control(id), FALSE);
    performStep("run");
    for (const int id : usable) EnableWindow(control(id), TRUE);
    SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control(ID_RUN)), TRUE);
}

// No exception may reach the system.
void HostWindow::attempt(const std::function<void()>& action) try { action(); } catch (const std::exception& error) {
    addLine(std::string("Error: ") + error.what());
}

void HostWindow::performStep(const Json& step) {
    attempt([&] {
        context_.transcript.write({{"event", "step"}, {"step", Event(step)}});
        nxhost::perform(context_, step);
        followEvents();
    });
    showParts();
}

void HostWindow::followEvents() {
    context_.transcript.collectAll();
    noteViolations(context_);
}

const devkit::PartData* HostWindow::selected() const {
    const auto row = SendMessageW(control(ID_PARTS), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    return row < 0 ? nullptr : &devkit::Session::instance().parts()[static_cast<std::size_t>(row)];
}

HWND HostWindow::control(int id) const {
    return GetDlgItem(window_, id);
}

}  // namespace nxhost
