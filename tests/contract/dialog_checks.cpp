// Block dialogs, by the layout of the main dialog: whoever runs the checks presses its button "Upload".
#include "check.h"

#include "platform/desktop.h"
#include "platform/module.h"
#include "platform/timer.h"

#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_Enumeration.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>
#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/UI.hxx>

#include <chrono>
#include <memory>
#include <optional>

namespace contract {
namespace {

using namespace std::chrono_literals;
using namespace NXOpen::BlockStyler;
using Clock = std::chrono::steady_clock;
using Properties = std::unique_ptr<PropertyList>;

constexpr const char* layout = "pivraGui.dlx";
constexpr const char* listId = "workspaceList";

enum class Moment { opening, shown, pressed, closed };

/// The dialog of one run. Its handlers let no exception go to the host: checks give none.
struct TestDialog {
    std::unique_ptr<BlockDialog> dialog;
    void (*tryChecks)();
    Moment moment = Moment::opening;
    platform::WindowHandle windowBefore = platform::activeWindow();
    platform::ThreadTimer timer{};
    int ticks = 0;
    UIBlock* changed = nullptr;
    std::optional<Clock::time_point> posted{};

    void show() {
        dialog->AddDialogShownHandler(NXOpen::make_callback(this, &TestDialog::dialogShown_cb));
        dialog->AddUpdateHandler(NXOpen::make_callback(this, &TestDialog::update_cb));
        dialog->Show();
        timer.stop();
        reach(Moment::closed);
    }
    void reach(Moment reached) {
        moment = reached;
        tryChecks();
    }
    void dialogShown_cb() {
        timer.start(50ms, [this] { ++ticks; });
        reach(Moment::shown);
    }
    int update_cb(UIBlock* block) {
        if (changed != nullptr) return 0;
        changed = block;
        reach(Moment::pressed);
        return 0;
    }

    UIBlock* find(const char* id) const { return dialog->TopBlock()->FindBlock(id); }
    Properties properties(const char* id) const {
        Properties list(dialog->GetBlockProperties(id));
        expect(list != nullptr, std::string("no properties of ") + id);
        return list;
    }
};

std::unique_ptr<TestDialog> shownDialog;

TestDialog& dialogAt(Moment moment) {
    if (shownDialog == nullptr || shownDialog->moment != moment)
        throw Needs{"a press of Upload in the dialog of the checks"};
    return *shownDialog;
}

void expectBack(const char* property, const std::string& text) {
    const auto label = dialogAt(Moment::shown).properties("fileName");
    label->SetString(property, nx::toHost(text));
    const auto back = nx::utf8(label->GetString(property));
    expect(back == text, property + (" is \"" + back + "\""));
}

Properties filledList() {
    const auto& dialog = dialogAt(Moment::shown);
    auto* list = dynamic_cast<Enumeration*>(dialog.find(listId));
    expect(list != nullptr, "the list is no Enumeration");
    const std::vector<NXOpen::NXString> members{nx::toHost("Träger"), nx::toHost("Gehäuse")};
    list->SetEnumMembers(members);
    return dialog.properties(listId);
}

void expectChosen(PropertyList& list, int index, const std::string& text) {
    const auto seen = nx::utf8(list.GetEnumAsString("Value"));
    expect(seen == text && list.GetEnum("Value") == index, seen + " is chosen");
}

std::unique_ptr<BlockDialog> create(const NXOpen::NXString& name) {
    return std::unique_ptr<BlockDialog>(NXOpen::UI::GetUI()->CreateDialog(name));
}

}  // namespace

void showDialog(void (*tryChecks)()) {
    if (shownDialog != nullptr && shownDialog->changed != nullptr) return;
    shownDialog.reset(new TestDialog{create(layout), tryChecks});
    expect(shownDialog->dialog != nullptr, "there is none by its name");
    shownDialog->show();
    shownDialog->dialog.reset();
}

void addDialogChecks() {
    check("layout-by-name", [] { expect(create(layout) != nullptr, "null"); });
    check("layout-by-path", [] {
        const auto file = platform::moduleDirectory() / layout;
        expect(create(nx::toHost(platform::utf8FromPath(file))) != nullptr, "null");
    });
    check("dialog-timer", [] { expect(dialogAt(Moment::pressed).ticks > 0, "no tick"); });
    check("dialog-update", [] {
        const auto& dialog = dialogAt(Moment::pressed);
        expect(dialog.changed == dialog.find("uploadButton"), "another object");
    });
    check("dialog-window", [] {
        auto& dialog = dialogAt(Moment::pressed);
        const auto window = platform::activeWindow();
        expect(window != nullptr && window != dialog.windowBefore, "the window that was active before, or none");
        dialog.posted = Clock::now();
        platform::postClose(window);
    });
    check("dialog-close", [] {
        const auto& dialog = dialogAt(Moment::closed);
        if (!dialog.posted) throw Needs{"a press of Upload, and dialog-window as assumed"};
        expect(Clock::now() - *dialog.posted < 3s, "it stayed open");
    });
    check("block-unknown", [] { expect(dialogAt(Moment::shown).find("noSuchBlock") == nullptr, "a block"); });
    check("block-texts", [] {
        expectBack("Bitmap", "pivra_info.bmp");
        expectBack("BalloonTooltipText", "Ø80");
        expectBack("Label", "Press Upload. If this stays open for 4 s, close it.");
    });
    check("block-visibility", [] {
        const auto group = dialogAt(Moment::shown).properties("targetWarningGroup");
        group->SetLogical("Show", true);
        const bool shown = group->GetLogical("Show");
        group->SetLogical("Show", false);
        expect(shown && !group->GetLogical("Show"), "it does not read back");
    });
    check("list-first-member", [] { expectChosen(*filledList(), 0, "Träger"); });
    check("list-chosen-member", [] {
        const auto list = filledList();
        list->SetEnum("Value", 1);
        expectChosen(*list, 1, "Gehäuse");
    });
}

}  // namespace contract
