#include "dialog_fixture.h"

#include "ui/message_box.h"

#include <stdexcept>

namespace {

using namespace ui_test;

TEST_F(DialogTest, MessageBoxTellsWhatEscapes) {
    ui::guardCallback([] { throw std::runtime_error("callback"); });
    ui::guardRun([] { throw std::runtime_error("Größe"); });
    ui::guardRun([] { throw 1; });
    EXPECT_THAT(host.boxes, ElementsAre("Pivra, error: callback", "Block Styler, error: Größe",
                                        "Block Styler, error: Unknown error."));
}

TEST_F(DialogTest, MessageBoxIsLoggedWhenItCannotBeShown) {
    fail("NXOpen::UI::NXMessageBox", 1, devkit::FaultKind::null);
    EXPECT_THROW(ui::ShowErrorMessage("x"), std::exception);
    fail("NXOpen::NXMessageBox::Show", 0);
    ui::guardCallback([] { throw std::runtime_error("callback"); });
    ui::guardRun([] { throw std::runtime_error("run"); });
    EXPECT_THAT(folder.logLines(), testing::IsSupersetOf({"[ERROR] [Pivra] callback", "[ERROR] [Pivra] run"}));
}

}  // namespace
