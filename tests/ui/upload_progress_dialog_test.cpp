#include "progress_fixture.h"

#include <devkit/gate.h>
#include <devkit/session.h>
#include <service/version.h>
#include <ui/progress_text.h>

#include <gmock/gmock.h>
#include <stdexcept>

namespace {

using namespace std::chrono_literals;
using test_support::OpenDialog;
using test_support::turnMessageLoop;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(ProgressDialog, ShowsPreparationUploadAndEnd) {
    Step prepared, uploaded;
    request->prepare = [&] { request->metadata->fileSizeMb = 2; };
    request->executeUpload = [&] {
        prepared.reach();
        uploaded.wait();
        return success();
    };
    host.user = [&](OpenDialog& dialog) {
        EXPECT_EQ(dialog.name(), "uploadProgress.dlx");
        EXPECT_EQ(dialog.bitmap("primaryStatus"), "pivra_upload_preparing.bmp");
        EXPECT_EQ(dialog.label("primaryStatus"), "Exporting your data for upload...");
        EXPECT_EQ(dialog.label("modelWorkspaceLabel"), "schräg.prt -> Main");
        EXPECT_EQ(dialog.tooltip("modelWorkspaceLabel"), "schräg.prt -> Main");
        EXPECT_EQ(dialog.label("sizeSecondaryLabel"), "Size: 1.00 MB");
        EXPECT_EQ(dialog.label("leftLabel1"), std::string(32, ' '));
        EXPECT_EQ(dialog.label("leftLabel2"), std::string(72 - 18 - 3, ' '));
        EXPECT_EQ(dialog.label("leftLabel3"), std::string(82 - (13 - 2) - 3, ' '));
        for (const char* right : {"rightLabel1", "rightLabel2", "rightLabel3"}) EXPECT_EQ(dialog.label(right), "   ");
        EXPECT_EQ(dialog.label("emailLabel"), "zoe@pivra.example");
        EXPECT_EQ(dialog.label("versionLabel"), std::string("Version ") + service::version);

        turnMessageLoop(900ms);
        prepared.wait();
        EXPECT_EQ(dialog.bitmap("primaryStatus"), "pivra_upload_uploading.bmp");
        EXPECT_EQ(dialog.label("primaryStatus"), "Transferring file to Pivra...");
        EXPECT_EQ(dialog.label("sizeSecondaryLabel"), "Size: 2.00 MB");
        EXPECT_EQ(dialog.bitmap("spinner"), "pivra_upload_busy.bmp");
        EXPECT_FALSE(dialog.visible("actionGroup"));

        uploaded.reach();
        turnUntil([&] { return dialog.visible("actionGroup"); });
        EXPECT_EQ(dialog.bitmap("primaryStatus"), "pivra_upload_uploaded.bmp");
        EXPECT_THAT(dialog.label("primaryStatus"), AllOf(testing::StartsWith("Uploaded "), testing::EndsWith("M")));
        EXPECT_EQ(dialog.bitmap("spinner"), "pivra_upload_complete.bmp");
    };
    EXPECT_FALSE(show());
    EXPECT_THAT(host.boxes, IsEmpty());
    EXPECT_THAT(devkit::Gate::instance().violations(), IsEmpty());
}

TEST_F(ProgressDialog, ReportsAFailedUploadAndOffersNothing) {
    const struct {
        std::function<pivra::UploadExecutionResult()> upload;
        std::string details;
    } cases[] = {
        {[] { return failure("No space."); }, "No space."},
        {[] { return failure(""); }, ui::failedWithoutDetails},
        {[]() -> pivra::UploadExecutionResult { throw std::runtime_error("inner"); }, ui::failedAfterExport},
        {[]() -> pivra::UploadExecutionResult { throw 1; }, ui::failedAfterExport},
        {{}, ui::failedAfterExport},
    };
    for (const auto& c : cases) {
        request->executeUpload = c.upload;
        host.boxes.clear();
        host.user = [&](OpenDialog& dialog) {
            turnUntil([&] { return !host.boxes.empty(); });
            EXPECT_FALSE(dialog.visible("actionGroup"));
            EXPECT_FALSE(dialog.visible("spinner"));
            EXPECT_EQ(dialog.bitmap("primaryStatus"), "pivra_warning.bmp");
            EXPECT_EQ(dialog.label("primaryStatus"), "Upload failed");
        };
        show();
        EXPECT_THAT(host.boxes, ElementsAre("Pivra, error: Pivra upload failed.\n\nFile: schräg.prt\nWorkspace: "
                                            "Main\n\nDetails: " +
                                            c.details));
    }
}

TEST_F(ProgressDialog, ReportsOnceAlthoughTheTimersTickBehindTheBox) {
    request->executeUpload = [] { return failure("No space."); };
    host.whileBoxIsOpen = [] { turnMessageLoop(900ms); };
    host.user = [&](OpenDialog&) {
        turnUntil([&] { return !host.boxes.empty(); });
        turnMessageLoop(500ms);
    };
    show();
    EXPECT_EQ(host.boxes.size(), 1U);
}

TEST_F(ProgressDialog, UploadsNothingAfterAFailedPreparation) {
    bool uploaded = false;
    request->executeUpload = [&] { return uploaded = true, success(); };
    const struct {
        std::function<void()> prepare;
        std::string details;
    } cases[] = {{[] { throw std::runtime_error("Legacy file(s) detected."); }, "Legacy file(s) detected."},
                 {[] { throw std::runtime_error(""); }, ui::failedPreparation},
                 {[] { throw 1; }, ui::failedPreparation}};
    for (const auto& c : cases) {
        request->prepare = c.prepare;
        host.boxes.clear();
        host.user = [&](OpenDialog& dialog) {
            turnUntil([&] { return !host.boxes.empty(); });
            EXPECT_EQ(dialog.label("primaryStatus"), "Upload failed");
        };
        show();
        ASSERT_EQ(host.boxes.size(), 1U);
        EXPECT_THAT(host.boxes[0], testing::EndsWith("Details: " + c.details));
    }
    EXPECT_FALSE(uploaded);
}

TEST_F(ProgressDialog, LogsAReportThatCannotBeShown) {
    folder.startLogging();
    request->executeUpload = [] { return failure("No space."); };
    devkit::Gate::instance().addFault({"NXOpen::NXMessageBox::Show", 1});
    host.user = [&](OpenDialog&) {
        turnUntil([&] { return logged("Pivra upload failure message could not be displayed."); });
    };
    show();
    EXPECT_THAT(folder.logLines(),
                testing::IsSupersetOf({"[ERROR] [Pivra] Pivra upload failed: No space.",
                                       "[ERROR] [Pivra] Pivra upload failure message could not be displayed."}));
}

TEST_F(ProgressDialog, LeavesAnUploadToItselfWhenItIsClosed) {
    const auto closed = std::make_shared<Step>();
    const auto done = std::make_shared<Step>();
    request->executeUpload = [closed, done] {
        closed->wait();
        done->reach();
        return success();
    };
    host.user = [](OpenDialog&) { turnMessageLoop(200ms); };
    EXPECT_FALSE(show());
    closed->reach();
    done->wait();
    turnMessageLoop(500ms);
    EXPECT_THAT(host.boxes, IsEmpty());
}

TEST_F(ProgressDialog, IsClosedBeforeAnythingIsStarted) {
    bool prepared = false;
    request->prepare = [&] { prepared = true; };
    show();
    turnMessageLoop(500ms);
    EXPECT_FALSE(prepared);
}

TEST_F(ProgressDialog, StartsTheWorkOnceHoweverOftenItIsShown) {
    int preparations = 0;
    request->prepare = [&] { ++preparations; };
    host.user = [&](OpenDialog& dialog) {
        dialog.showAgain();
        turnUntil([&] { return dialog.visible("actionGroup"); });
        const auto end = dialog.label("primaryStatus");
        dialog.showAgain();
        turnMessageLoop(900ms);
        EXPECT_EQ(dialog.label("primaryStatus"), end);
    };
    show();
    EXPECT_EQ(preparations, 1);
}

TEST_F(ProgressDialog, TellsThatAnotherUploadIsWanted) {
    host.user = [](OpenDialog& dialog) { dialog.press("uploadAnotherButton"); };
    EXPECT_TRUE(show());
}

TEST_F(ProgressDialog, HasNoLinkBeforeTheUploadOrWithoutOne) {
    auto linkless = success();
    linkless.responseEntries = {{"revisionId", "7"}, {"link", "https://pivra/?revisionId=8"}};
    request->executeUpload = [&] { return linkless; };
    host.user = [&](OpenDialog& dialog) {
        dialog.press("openInPivraButton");
        turnUntil([&] { return dialog.visible("actionGroup"); });
        dialog.press("openInPivraButton");
    };
    show();
    const std::string message = std::string("Pivra, error: ") + ui::noMatchingLink;
    EXPECT_THAT(host.boxes, ElementsAre(message, message));
}

}  // namespace
