// The shipped layouts hold what the dialogs look for.
#include <devkit/dialog.h>

#include <gtest/gtest.h>
#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace {

const std::filesystem::path application = PIVRA_APPLICATION_FOLDER;

const char* const label = "UICOMP_label";
const char* const button = "UICOMP_button";
const char* const group = "UGS::UICOMP_group";

using Blocks = std::map<std::string, std::string>;

const std::map<std::string, Blocks> dialogs{{"start.dlx", {{"signInButton", button}}},
                                            {"pivraGui.dlx",
                                             {{"userGreeting", label},
                                              {"blankLabel1", label},
                                              {"group0", group},
                                              {"fileName", label},
                                              {"fileSize", label},
                                              {"lastModified", label},
                                              {"blankLabel2", label},
                                              {"selectWorkspaceLabel", label},
                                              {"workspaceList", "UICOMP_enum"},
                                              {"signOutButton", button},
                                              {"uploadButton", button},
                                              {"emailLabel", label},
                                              {"versionLabel", label},
                                              {"idWarning", label},
                                              {"idWarningGroup", group},
                                              {"drwWarning", label},
                                              {"drwWarningGroup", group},
                                              {"unsavedWarning", label},
                                              {"unsavedWarningGroup", group},
                                              {"unsupportedWarning", label},
                                              {"unsupportedWarningGroup", group},
                                              {"unloadedWarning", label},
                                              {"unloadedWarningGroup", group},
                                              {"targetWarning", label},
                                              {"targetWarningGroup", group}}},
                                            {"uploadProgress.dlx",
                                             {{"primaryStatus", label},
                                              {"spinner", label},
                                              {"actionGroup", group},
                                              {"openInPivraButton", button},
                                              {"uploadAnotherButton", button},
                                              {"modelWorkspaceLabel", label},
                                              {"emailLabel", label},
                                              {"versionLabel", label},
                                              {"sizeSecondaryLabel", label},
                                              {"leftLabel1", label},
                                              {"rightLabel1", label},
                                              {"leftLabel2", label},
                                              {"rightLabel2", label},
                                              {"leftLabel3", label},
                                              {"rightLabel3", label}}}};

void forEachBlock(const devkit::BlockData& block, const std::function<void(const devkit::BlockData&)>& visit) {
    for (const auto& child : block.children) {
        visit(*child);
        forEachBlock(*child, visit);
    }
}

TEST(Layouts, HoldTheBlocksOfTheirDialogs) {
    for (const auto& [file, blocks] : dialogs) {
        const auto dialog = devkit::readLayout(application / file);
        EXPECT_EQ(dialog->title, "Pivra");
        EXPECT_EQ(devkit::numberProperty(dialog->top, "Navigation Style", -1), 1) << file << " has more than Close";
        for (const auto& [id, type] : blocks) {
            const auto* block = dialog->find(id);
            ASSERT_NE(block, nullptr) << file << " " << id;
            EXPECT_EQ(block->type, type) << file << " " << id;
        }
    }
}

TEST(Layouts, HideAtFirstWhatComesLater) {
    const auto main = devkit::readLayout(application / "pivraGui.dlx");
    for (const char* id : {"idWarningGroup", "drwWarningGroup", "unsavedWarningGroup", "unsupportedWarningGroup",
                           "targetWarningGroup"}) {
        EXPECT_FALSE(devkit::flagProperty(*main->find(id), "Show", true)) << id;
    }
    EXPECT_FALSE(devkit::flagProperty(*main->find("workspaceList"), "RetainValue", true));
    const auto progress = devkit::readLayout(application / "uploadProgress.dlx");
    EXPECT_FALSE(devkit::flagProperty(*progress->find("actionGroup"), "Show", true));
}

TEST(Layouts, NameBitmapsThatShip) {
    std::set<std::string> bitmaps{"pivra_file_upload_asm_icon.bmp", "pivra_upload_uploading.bmp",
                                  "pivra_upload_uploaded.bmp", "pivra_upload_complete.bmp"};
    for (const auto& [file, blocks] : dialogs) {
        const auto dialog = devkit::readLayout(application / file);
        forEachBlock(dialog->top, [&](const auto& block) { bitmaps.insert(devkit::textProperty(block, "Bitmap")); });
    }
    bitmaps.erase("");
    EXPECT_GE(bitmaps.size(), 9U);
    for (const auto& bitmap : bitmaps) EXPECT_TRUE(std::filesystem::exists(application / bitmap)) << bitmap;
}

}  // namespace
