#include <devkit/gate.h>
#include <support/plugin_folder.h>
#include <support/scripted_host.h>
#include <ui/callback_guard.h>
#include <ui/message_box.h>

#include <gmock/gmock.h>
#include <stdexcept>

namespace {

using testing::ElementsAre;

class MessageBox : public testing::Test {
 protected:
    MessageBox() { folder.startLogging(); }

    test_support::PluginFolder folder;
    test_support::ScriptedHost host;
};

TEST_F(MessageBox, HasTitleAndKind) {
    ui::ShowErrorMessage("Größe");
    ui::ShowInfoMessage("日本");
    ui::showFailureMessage("a");
    ui::showExceptionMessage("b");
    EXPECT_THAT(host.boxes, ElementsAre("Pivra, error: Größe", "Pivra, information: 日本", "Pivra, error: a",
                                        "Block Styler, error: b"));
}

TEST_F(MessageBox, TellsWhatEscapes) {
    ui::guardCallback([] { throw std::runtime_error("callback"); });
    ui::guardRun([] { throw std::runtime_error("run"); });
    ui::guardRun([] { throw 1; });
    EXPECT_THAT(host.boxes, ElementsAre("Pivra, error: callback", "Block Styler, error: run",
                                        "Block Styler, error: Unknown error."));
}

TEST_F(MessageBox, IsLoggedWhenItCannotBeShown) {
    for (const bool null : {false, true})
        devkit::Gate::instance().addFault({"NXOpen::UI::NXMessageBox", 1u + null, 1, "", null});
    EXPECT_THROW(ui::ShowErrorMessage("x"), std::exception);
    EXPECT_THROW(ui::ShowErrorMessage("x"), std::exception);
    devkit::Gate::instance().addFault({"NXOpen::NXMessageBox::Show", 0});
    ui::guardCallback([] { throw std::runtime_error("callback"); });
    ui::guardRun([] { throw std::runtime_error("run"); });
    EXPECT_THAT(folder.logLines(), testing::IsSupersetOf({"[ERROR] [Pivra] callback", "[ERROR] [Pivra] run"}));
}

}  // namespace
