// What the dialog shows is in tests/replays.
#include "dialog_fixture.h"

#include "ui/main_dialog.h"

namespace {

using namespace ui_test;

TEST_F(DialogTest, SignOutWithdrawsAnUploadThatWasAcceptedBefore) {
    ui::MainDialogActions actions;
    actions.readMetadata = [] { return std::make_shared<pivra::ModelMetadata>(); };
    actions.isDrawing = [] { return false; };
    actions.fixLegacyIdEnabled = actions.isSignedIn = [] { return true; };
    actions.userName = actions.userEmail = [] { return "zoe"; };
    actions.loadWorkspaces = [] { return pivra::WorkspaceLoadResult{true, {cpp_piv::CppPivWorkspace{}}, ""}; };
    actions.signOut = [] {};
    host.user = [](OpenDialog& dialog) { dialog.press("uploadButton"); };
    EXPECT_TRUE(ui::showMainDialog(actions).selectedWorkspace);
    host.user = [](OpenDialog& dialog) {
        dialog.press("uploadButton");
        dialog.press("signOutButton");
    };
    EXPECT_FALSE(ui::showMainDialog(actions).selectedWorkspace);
    EXPECT_THAT(host.boxes, IsEmpty());
}

}  // namespace
