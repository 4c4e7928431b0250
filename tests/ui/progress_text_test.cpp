#include <ui/progress_text.h>

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace ui;

TEST(StageView, HasPictureAndText) {
    EXPECT_STREQ(stageView(UploadStage::preparing, "").bitmap, "pivra_upload_preparing.bmp");
    EXPECT_EQ(stageView(UploadStage::preparing, "").text, "Exporting your data for upload...");
    EXPECT_STREQ(stageView(UploadStage::uploading, "").bitmap, "pivra_upload_uploading.bmp");
    EXPECT_EQ(stageView(UploadStage::uploading, "").text, "Transferring file to Pivra...");
    EXPECT_STREQ(stageView(UploadStage::uploaded, "now").bitmap, "pivra_upload_uploaded.bmp");
    EXPECT_EQ(stageView(UploadStage::uploaded, "May 04, 2025 - 09:07 PM").text, "Uploaded May 04, 2025 - 09:07 PM");
}

TEST(LeftBlanks, CentreALineOrKeepAMargin) {
    const struct {
        std::size_t length, width, expected;
    } cases[] = {{40, 75, 32}, {0, 72, 69}, {65, 72, 4},  {66, 72, 3},
                 {67, 72, 3},  {72, 72, 3}, {500, 72, 3}, {11, 82, 68}};
    for (const auto& c : cases) {
        EXPECT_EQ(leftBlanks(c.length, c.width), std::string(c.expected, ' ')) << c.length << " in " << c.width;
    }
    EXPECT_STREQ(rightBlanks, "   ");
}

TEST(FailureReport, LeavesOutWhatIsNotKnown) {
    EXPECT_EQ(failureReport("bolt.prt", "Main", "No space."),
              "Pivra upload failed.\n\nFile: bolt.prt\nWorkspace: Main\n\nDetails: No space.");
    EXPECT_EQ(failureReport("bolt.prt", "", "No space."),
              "Pivra upload failed.\n\nFile: bolt.prt\n\nDetails: No space.");
    EXPECT_EQ(failureReport("", "Main", "No space."), "Pivra upload failed.\nWorkspace: Main\n\nDetails: No space.");
    EXPECT_EQ(
        failureReport("", "", ""),
        "Pivra upload failed.\n\nDetails: Pivra upload failed before returning details. If NX logging is enabled, "
        "check pivra-integration.log in the configured NX log directory for the preceding upload events. Then try "
        "again.");
}

}  // namespace
