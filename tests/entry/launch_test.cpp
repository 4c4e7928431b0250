// What a run shows is in tests/replays.
#include "entry/launch.h"
#include <support/parts_fixture.h>
#include <support/scripted_host.h>
#include "export/session_temp_directories.h"

#include <filesystem>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class Launch : public testing::Test {
 protected:
    ~Launch() override { pivra::cleanupSessionTempDirectory(); }

    std::size_t tempFolders() const {
        const fs::directory_iterator entries(folder.temp());
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }

    test_support::PluginFolder& folder = *test_support::FolderEnvironment::folder;
    test_support::ScriptedHost host;
};

/// A main dialog that was closed, with an upload into `workspaceId` or without.
ui::MainDialogState closedMainDialog(std::optional<std::int64_t> workspaceId) {
    std::vector<cpp_piv::CppPivWorkspace> workspaces(2);
    workspaces[0].id = 11;
    workspaces[0].name = "Main";
    workspaces[1].id = 12;
    ui::MainDialogState state;
    state.metadata = std::make_shared<pivra::ModelMetadata>();
    state.workspaces = std::make_shared<const std::vector<cpp_piv::CppPivWorkspace>>(workspaces);
    for (const auto& workspace : workspaces) {
        if (workspace.id == workspaceId) state.selectedWorkspace = workspace;
    }
    return state;
}

TEST_F(Launch, AlternatesTheDialogsAndLeavesNoTemporaryFolder) {
    fs::create_directory(folder.temp() / "pivra-0123456789abcdef");
    std::vector<std::optional<std::int64_t>> choices{11, 12, std::nullopt, 11, 13};
    std::vector<std::string> uploads;
    const auto showMain = [&] {
        EXPECT_EQ(tempFolders(), 0U) << "neither an earlier run's nor another round's";
        pivra::sessionTempDirectory("part");
        const auto choice = choices.front();
        choices.erase(choices.begin());
        if (choice == 13) throw std::runtime_error("dialog");
        return closedMainDialog(choice);
    };
    bool another = true;
    const auto showProgress = [&](const std::shared_ptr<ui::UploadProgressRequest>& request) {
        EXPECT_EQ(tempFolders(), 1U);
        uploads.push_back(pivra::workspaceLabel(request->workspace.name));
        return another;
    };
    entry::alternateDialogs(showMain, showProgress);
    EXPECT_THAT(uploads, ElementsAre("Main", "(unnamed workspace)"));
    EXPECT_EQ(tempFolders(), 0U);

    another = false;
    entry::alternateDialogs(showMain, showProgress);
    EXPECT_EQ(uploads.size(), 3U);
    EXPECT_THROW(entry::alternateDialogs(showMain, showProgress), std::runtime_error);
    EXPECT_EQ(tempFolders(), 0U);
}

TEST_F(Launch, CleanUpLeavesNoTemporaryFolder) {
    pivra::sessionTempDirectory("part");
    entry::cleanUp();
    EXPECT_EQ(tempFolders(), 0U);
}

}  // namespace
