#include "launch_fixture.h"

#include <entry/dialog_wiring.h>
#include <entry/launch.h>

#include <gmock/gmock.h>
#include <stdexcept>

namespace {

using test_support::OpenDialog;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(Launch, ShowsThePendingMessageOnceAndThenTheSignIn) {
    scripted.client.authorize = [] { return ""; };
    scripted.start(session);
    entry::run();
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "logs"));
    entry::run();
    EXPECT_THAT(host.boxes, ElementsAre("Pivra, error: Pivra authentication did not return an authorization URL."));
    EXPECT_THAT(host.dialogs, ElementsAre("start.dlx", "start.dlx"));
}

TEST_F(Launch, ShowsTheMainDialogToASignedInUser) {
    scripted.signIn(session);
    std::filesystem::create_directory(folder.temp() / "pivra-0123456789abcdef");
    host.user = [this](OpenDialog& dialog) {
        EXPECT_EQ(tempFolders(), 0U) << "left by an earlier run";
        EXPECT_EQ(dialog.label("emailLabel"), "token@pivra.example");
        EXPECT_EQ(dialog.label("fileName"), "     No displayed part");
        EXPECT_TRUE(dialog.members("workspaceList").size() == 1 && host.boxes.size() == 1) << "no service library here";
    };
    entry::run();
    EXPECT_THAT(host.dialogs, ElementsAre("pivraGui.dlx"));
}

/// A main dialog that was closed, with an upload into `workspaceId` or without.
ui::MainDialogState closedMainDialog(std::optional<std::int64_t> workspaceId) {
    std::vector<cpp_piv::CppPivWorkspace> workspaces(2);
    workspaces[0].id = 11;
    workspaces[0].name = "Main";
    workspaces[1].id = 12;
    ui::MainDialogState state;
    state.metadata = std::make_shared<pivra::ModelMetadata>();
    state.metadata->traceabilityError = "not repaired";
    state.workspaces = std::make_shared<const std::vector<cpp_piv::CppPivWorkspace>>(workspaces);
    state.selectedWorkspaceId = workspaceId;
    return state;
}

TEST_F(Launch, AlternatesTheDialogsUntilOneIsClosedForGood) {
    std::vector<std::optional<std::int64_t>> choices{11, 12, std::nullopt, 11};
    std::vector<std::string> uploads;
    const auto showMain = [&] {
        EXPECT_EQ(tempFolders(), 0U) << "a round keeps no folder";
        pivra::sessionTempDirectory("part");
        const auto choice = choices.front();
        choices.erase(choices.begin());
        return closedMainDialog(choice);
    };
    bool another = true;
    const auto showProgress = [&](const std::shared_ptr<ui::UploadProgressRequest>& request) {
        EXPECT_EQ(tempFolders(), 1U);
        uploads.push_back(request->workspaceName);
        return another;
    };
    entry::alternateDialogs(showMain, showProgress);
    EXPECT_THAT(uploads, ElementsAre("Main", "(unnamed workspace)"));
    EXPECT_EQ(tempFolders(), 0U);

    another = false;
    entry::alternateDialogs(showMain, showProgress);
    EXPECT_EQ(uploads.size(), 3U);
    EXPECT_THAT(choices, IsEmpty());
    EXPECT_EQ(tempFolders(), 0U);
}

TEST_F(Launch, LeavesNoTemporaryFolderAfterAnException) {
    const auto failing = []() -> ui::MainDialogState {
        pivra::sessionTempDirectory("part");
        throw std::runtime_error("dialog");
    };
    EXPECT_THROW(entry::alternateDialogs(failing, {}), std::runtime_error);
    EXPECT_EQ(tempFolders(), 0U);
}

TEST_F(Launch, MakesARequestOfWhatWasAccepted) {
    scripted.signIn(session);
    const auto state = closedMainDialog(11);
    const auto request = entry::uploadRequest(state);
    EXPECT_EQ(request->metadata, state.metadata);
    EXPECT_EQ(request->workspaces, state.workspaces);
    EXPECT_EQ(request->workspaceId, 11);
    EXPECT_EQ(request->userEmail, "token@pivra.example");
    const auto result = request->executeUpload();
    EXPECT_EQ(result.workspaceId, 11);
    EXPECT_EQ(result.message, "not repaired");

    EXPECT_EQ(entry::uploadRequest(closedMainDialog(13))->workspaceName, "");
    EXPECT_FALSE(entry::uploadRequest(closedMainDialog(13))->executeUpload().attempted);
}

TEST_F(Launch, CleansUp) {
    scripted.start(session);
    pivra::sessionTempDirectory("part");
    entry::cleanUp();
    EXPECT_EQ(tempFolders(), 0U);
    EXPECT_FALSE(session.isInProgress());
    scripted.background();
    EXPECT_FALSE(session.isSignedIn()) << "a late result";
}

}  // namespace
