// What the dialog shows is in tests/replays.
#include "dialog_fixture.h"

#include "ui/main_dialog.h"

namespace {

using namespace ui_test;

ui::MainDialogActions actionsOfUser() {
    ui::MainDialogActions actions;
    actions.readMetadata = [] {
        auto metadata = std::make_shared<pivra::ModelMetadata>();
        metadata->sourceFileId = "id";
        return metadata;
    };
    actions.lookupRevision = [](auto&&...) { return pivra::RevisionLookupResult(); };
    actions.isDrawing = [] { return false; };
    actions.fixLegacyIdEnabled = actions.isSignedIn = [] { return true; };
    actions.userName = actions.userEmail = [] { return "zoe"; };
    actions.loadWorkspaces = [] { return pivra::WorkspaceLoadResult{true, {cpp_piv::CppPivWorkspace{}}, ""}; };
    actions.signOut = [] {};
    return actions;
}

TEST_F(DialogTest, AsksTheServiceForOneListAndOncePerChoice) {
    auto actions = actionsOfUser();
    int lists = 0;
    int lookups = 0;
    actions.loadWorkspaces = [&lists, load = actions.loadWorkspaces] { return ++lists, load(); };
    actions.lookupRevision = [&lookups](auto&&...) { return ++lookups, pivra::RevisionLookupResult(); };
    host.user = [](OpenDialog& dialog) { dialog.press("workspaceList"); };
    ui::showMainDialog(actions);
    EXPECT_EQ(lists, 1);
    EXPECT_EQ(lookups, 2);
}

TEST_F(DialogTest, SignOutWithdrawsAnUploadThatWasAcceptedBefore) {
    const auto actions = actionsOfUser();
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
