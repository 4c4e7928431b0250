// What the shipped layouts say on their own; the replays find the blocks that the dialogs look for.
#include <devkit/dialog.h>

#include <gtest/gtest.h>
#include <filesystem>
#include <functional>
#include <set>
#include <string>

namespace {

const std::filesystem::path application = PIVRA_APPLICATION_FOLDER;

void forEachBlock(const devkit::BlockData& block, const std::function<void(const devkit::BlockData&)>& visit) {
    for (const auto& child : block.children) {
        visit(*child);
        forEachBlock(*child, visit);
    }
}

TEST(Layouts, HaveATitleNoButtonsButCloseAndBitmapsThatShip) {
    std::set<std::string> bitmaps{"pivra_file_upload_asm_icon.bmp", "pivra_upload_uploading.bmp",
                                  "pivra_upload_uploaded.bmp", "pivra_upload_complete.bmp"};
    for (const char* file : {"start.dlx", "pivraGui.dlx", "uploadProgress.dlx"}) {
        const auto dialog = devkit::readLayout(application / file);
        EXPECT_EQ(dialog->title, "Pivra");
        EXPECT_EQ(devkit::propertyOr(dialog->top, "Navigation Style", -1), 1) << file;
        forEachBlock(dialog->top, [&](const auto& block) { bitmaps.insert(devkit::textProperty(block, "Bitmap")); });
    }
    bitmaps.erase("");
    EXPECT_GE(bitmaps.size(), 9U);
    for (const auto& bitmap : bitmaps) EXPECT_TRUE(std::filesystem::exists(application / bitmap)) << bitmap;
}

TEST(Layouts, HideAtFirstWhatComesLater) {
    const auto main = devkit::readLayout(application / "pivraGui.dlx");
    for (const char* id : {"idWarningGroup", "drwWarningGroup", "unsavedWarningGroup", "unsupportedWarningGroup",
                           "unloadedWarningGroup", "targetWarningGroup"}) {
        EXPECT_FALSE(devkit::propertyOr(*main->find(id), "Show", true)) << id;
    }
    EXPECT_FALSE(devkit::propertyOr(*main->find("workspaceList"), "RetainValue", true));
    const auto progress = devkit::readLayout(application / "uploadProgress.dlx");
    EXPECT_FALSE(devkit::propertyOr(*progress->find("actionGroup"), "Show", true));
}

}  // namespace
