// Block dialogs, by the layout of the main dialog: whoever runs the checks presses its button "Upload".
#include "check.h"

#include <nx/text.h>
#include <platform/files.h>
#include <platform/module.h>
#include <platform/text_encoding.h>
#include <platform/timer.h>
#include <platform/window.h>

#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_Enumeration.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>
#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/UI.hxx>

#include <chrono>
#include <exception>
#include <functional>
#include <map>
#include <memory>

namespace contract {
namespace {

using namespace std::chrono_literals;
using NXOpen::BlockStyler::BlockDialog;
using NXOpen::BlockStyler::Button;
using NXOpen::BlockStyler::Enumeration;
using NXOpen::BlockStyler::PropertyList;
using NXOpen::BlockStyler::UIBlock;
using DialogOwner = std::unique_ptr<BlockDialog>;
using Clock = std::chrono::steady_clock;

const std::string layout = "pivraGui.dlx";
constexpr const char* labelId = "fileName";
constexpr const char* groupId = "targetWarningGroup";
constexpr const char* listId = "workspaceList";
constexpr const char* buttonId = "uploadButton";
constexpr const char* unknownId = "noSuchBlock";
constexpr auto patience = 3s;

DialogOwner createByName() {
    return DialogOwner(NXOpen::UI::GetUI()->CreateDialog(layout.c_str()));
}

DialogOwner createByPath() {
    const auto file = platform::moduleDirectory() / layout;
    if (!platform::isRegularFile(file)) throw Needs{layout + " beside this library"};
    return DialogOwner(NXOpen::UI::GetUI()->CreateDialog(nx::toHost(platform::utf8FromPath(file))));
}

/// The dialog, and what was seen of it by the name of the check. Host's thread.
class TestDialog {
 public:
    explicit TestDialog(DialogOwner dialog) : dialog_(std::move(dialog)) {}

    std::map<std::string, std::string> show();

 private:
    void initialize_cb();
    void dialogShown_cb();
    int update_cb(UIBlock* changed);

    UIBlock* find(const char* id) { return dialog_->TopBlock()->FindBlock(id); }
    std::unique_ptr<PropertyList> properties(const char* id) {
        std::unique_ptr<PropertyList> list(dialog_->GetBlockProperties(id));
        if (!list) throw std::runtime_error(std::string("no properties of ") + id);
        return list;
    }
    std::string blockTypes();
    std::string unknownProperties();
    std::string firstMember();
    std::string chosenMember();
    std::string textProperties();
    std::string visibility();
    void look(const char* check, const std::function<std::string()>& look);

    DialogOwner dialog_;
    std::map<std::string, std::string> seen_;
    platform::ThreadTimer timer_;
    platform::WindowHandle before_ = nullptr;
    int ticks_ = 0;
    Clock::time_point posted_{};
};

std::map<std::string, std::string> TestDialog::show() {
    dialog_->AddInitializeHandler(NXOpen::make_callback(this, &TestDialog::initialize_cb));
    dialog_->AddDialogShownHandler(NXOpen::make_callback(this, &TestDialog::dialogShown_cb));
    dialog_->AddUpdateHandler(NXOpen::make_callback(this, &TestDialog::update_cb));
    before_ = platform::activeWindow();
    dialog_->Show();
    timer_.stop();
    if (posted_ != Clock::time_point())
        look("dialog-close", [this] { return unless(Clock::now() - posted_ < patience, "it stayed open"); });
    return seen_;
}

/// No exception may go back to the host.
void TestDialog::look(const char* check, const std::function<std::string()>& look) {
    try {
        seen_[check] = look();
    } catch (const std::exception& error) {
        seen_[check] = error.what();
    } catch (...) {
        seen_[check] = "an exception that is no std::exception";
    }
}

void TestDialog::initialize_cb() {
    look("block-types", [this] { return blockTypes(); });
    look("block-unknown", [this] { return unless(find(unknownId) == nullptr, "a block"); });
    look("block-unknown-properties", [this] { return unknownProperties(); });
}

void TestDialog::dialogShown_cb() {
    look("dialog-initialize", [this] { return unless(seen_.count("block-types") != 0, "not before this handler"); });
    look("dialog-shown", [this] { return unless(platform::activeWindow() == before_, "a window of its own"); });
    look("list-first-member", [this] { return firstMember(); });
    look("list-chosen-member", [this] { return chosenMember(); });
    look("block-texts", [this] { return textProperties(); });
    look("block-visibility", [this] { return visibility(); });
    timer_.start(50ms, [this] { ++ticks_; });
}

int TestDialog::update_cb(UIBlock* changed) {
    if (posted_ != Clock::time_point()) return 0;
    look("dialog-update", [&] { return unless(changed == find(buttonId), "another object"); });
    look("dialog-timer", [this] { return unless(ticks_ > 0, "no tick"); });
    look("dialog-window", [this] {
        const auto window = platform::activeWindow();
        if (window == nullptr || window == before_) return std::string("the window that was active before, or none");
        posted_ = Clock::now();
        platform::postClose(window);
        return std::string();
    });
    return 0;
}

std::string TestDialog::blockTypes() {
    const bool typed = dynamic_cast<Button*>(find(buttonId)) && dynamic_cast<Enumeration*>(find(listId));
    return unless(typed, "blocks of other classes");
}

std::string TestDialog::unknownProperties() {
    try {
        const std::unique_ptr<PropertyList> list(dialog_->GetBlockProperties(unknownId));
        return list ? "a list" : "null";
    } catch (const std::exception&) {
        return {};
    }
}

std::string TestDialog::firstMember() {
    auto* list = dynamic_cast<Enumeration*>(find(listId));
    if (list == nullptr) return "no list";
    std::vector<NXOpen::NXString> members{nx::toHost("Träger"), nx::toHost("Gehäuse")};
    list->SetEnumMembers(members);
    const auto values = properties(listId);
    const auto text = nx::utf8(values->GetEnumAsString("Value"));
    return unless(text == "Träger" && values->GetEnum("Value") == 0, text + " is chosen");
}

std::string TestDialog::chosenMember() {
    const auto values = properties(listId);
    values->SetEnum("Value", 1);
    const auto text = nx::utf8(values->GetEnumAsString("Value"));
    return unless(text == "Gehäuse" && values->GetEnum("Value") == 1, text + " is chosen");
}

std::string TestDialog::textProperties() {
    const auto label = properties(labelId);
    const std::map<std::string, std::string> texts{
        {"Bitmap", "pivra_info.bmp"},
        {"BalloonTooltipText", "Ø80"},
        {"Label", "Press Upload. If this stays open for 4 s, close it."},
    };
    for (const auto& [name, text] : texts) {
        label->SetString(name.c_str(), nx::toHost(text));
        const auto back = nx::utf8(label->GetString(name.c_str()));
        if (back != text) return name + ": " + back;
    }
    return {};
}

std::string TestDialog::visibility() {
    const auto group = properties(groupId);
    group->SetLogical("Show", true);
    const bool shown = group->GetLogical("Show");
    group->SetLogical("Show", false);
    return unless(shown && !group->GetLogical("Show"), "it does not read back");
}

/// What was seen of the dialog that was shown last.
std::map<std::string, std::string>& lastDialog() {
    static std::map<std::string, std::string> seen;
    return seen;
}

void showDialog() {
    DialogOwner dialog;
    try {
        dialog = createByName();
    } catch (const std::exception&) {
        // layout-by-name looks at that.
    }
    if (!dialog) dialog = createByPath();
    if (!dialog) throw Needs{"a dialog by the layout " + layout};
    lastDialog() = TestDialog(std::move(dialog)).show();
}

std::string seenOf(const char* check) {
    if (lastDialog().empty()) showDialog();
    const auto found = lastDialog().find(check);
    if (found == lastDialog().end()) throw Needs{"a press of Upload in the dialog of the checks"};
    return found->second;
}

}  // namespace

void forgetDialog() {
    lastDialog().clear();
}

std::vector<Check> dialogChecks() {
    return {
        {"layout-by-name", [] { return unless(createByName() != nullptr, "null"); }},
        {"layout-by-path", [] { return unless(createByPath() != nullptr, "null"); }},
        {"dialog-initialize", [] { return seenOf("dialog-initialize"); }},
        {"dialog-shown", [] { return seenOf("dialog-shown"); }},
        {"dialog-timer", [] { return seenOf("dialog-timer"); }},
        {"dialog-update", [] { return seenOf("dialog-update"); }},
        {"dialog-window", [] { return seenOf("dialog-window"); }},
        {"dialog-close", [] { return seenOf("dialog-close"); }},
        {"block-types", [] { return seenOf("block-types"); }},
        {"block-unknown", [] { return seenOf("block-unknown"); }},
        {"block-unknown-properties", [] { return seenOf("block-unknown-properties"); }},
        {"block-texts", [] { return seenOf("block-texts"); }},
        {"block-visibility", [] { return seenOf("block-visibility"); }},
        {"list-first-member", [] { return seenOf("list-first-member"); }},
        {"list-chosen-member", [] { return seenOf("list-chosen-member"); }},
    };
}

}  // namespace contract
