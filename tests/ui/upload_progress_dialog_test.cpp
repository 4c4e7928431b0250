// What the dialog shows in each state is in tests/replays.
#include "dialog_fixture.h"

#include "ui/dialog_text.h"

#include <stdexcept>

namespace {

using namespace std::chrono_literals;
using namespace ui_test;

TEST_F(ProgressDialog, ReportsAFailureWithOrWithoutWords) {
    request->workspace.name = "Main";
    bool uploaded = false;
    const auto upload = [&] { return uploaded = true, success(); };
    const struct {
        std::function<void()> prepare;
        std::function<pivra::UploadExecutionResult()> upload;
        std::string details;
    } cases[] = {
        {{}, [] { return failure(""); }, ui::failedWithoutDetails},
        {{}, []() -> pivra::UploadExecutionResult { throw std::runtime_error("inner"); }, ui::failedAfterExport},
        {{}, []() -> pivra::UploadExecutionResult { throw 1; }, ui::failedAfterExport},
        {{}, {}, ui::failedAfterExport},
        {[] { throw std::runtime_error("Legacy file(s) detected."); }, upload, "Legacy file(s) detected."},
        {[] { throw std::runtime_error(""); }, upload, ui::failedPreparation},
        {[] { throw 1; }, upload, ui::failedPreparation},
    };
    for (const auto& c : cases) {
        request->prepare = c.prepare;
        request->executeUpload = c.upload;
        host.boxes.clear();
        host.user = [&](OpenDialog&) { turnUntil([&] { return !host.boxes.empty(); }); };
        show();
        EXPECT_THAT(host.boxes,
                    ElementsAre("Pivra, error: Pivra upload failed.\nWorkspace: Main\n\nDetails: " + c.details));
    }
    EXPECT_FALSE(uploaded);
    EXPECT_THAT(folder.logLines(),
                testing::IsSupersetOf({"[ERROR] [Pivra] Upload failed after NX export completed: inner",
                                       "[ERROR] [Pivra] Upload preparation failed: Legacy file(s) detected."}));
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

TEST_F(ProgressDialog, LogsAReportThatCannotBeShown) {
    request->executeUpload = [] { return failure("No space."); };
    fail("NXOpen::NXMessageBox::Show", 1);
    const std::string line = "[ERROR] [Pivra] Pivra upload failure message could not be displayed.";
    host.user = [&](OpenDialog&) { turnUntil([&] { return testing::Matches(Contains(line))(folder.logLines()); }); };
    show();
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
    host.user = [](OpenDialog&) {};
    show();
    turnMessageLoop(500ms);
    EXPECT_EQ(preparations, 1) << "closed before anything was started";
}

}  // namespace
