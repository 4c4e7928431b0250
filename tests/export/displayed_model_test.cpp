// Which files are exported, when and under what name, is in tests/replays.
#include "export_fixture.h"

#include "export/displayed_model_export.h"
#include "export/displayed_model_metadata.h"
#include "export/upload_preparation.h"

#include <map>

namespace {

using namespace export_test;
using namespace std::chrono_literals;

TEST(ModelTimes, areFormattedInEnglish) {
    constexpr std::chrono::system_clock::time_point epoch{};
    EXPECT_EQ(pivra::formatUtcTime(epoch + 1709210096s), "2024-02-29T12:34:56Z");
    EXPECT_EQ(pivra::formatUtcTime(epoch - 1s), "1969-12-31T23:59:59Z");
    // In a zone of whole hours, a day holds each hour of both halves once; 12 stands for 0.
    std::map<std::string, int> hours;
    for (int hour = 0; hour < 24; ++hour) {
        const std::string text = pivra::formatDisplayTime(epoch + std::chrono::hours(24 * 400 + hour));
        ++hours[text.substr(text.find(" - ") + 3, 2) + text.substr(text.size() - 2)];
    }
    EXPECT_EQ(hours.size(), 24u);
    EXPECT_EQ(hours.count("12AM") + hours.count("12PM"), 2u);
    std::map<std::string, int> months;
    for (int month = 0; month < 12; ++month) {
        const std::string text = pivra::formatDisplayTime(epoch + std::chrono::hours(24 * 14 + 730 * month));
        ++months[text.substr(0, text.find(' '))];
        EXPECT_NE(text.find(", 1970 - "), std::string::npos) << text;
    }
    EXPECT_EQ(months.size(), 12u);
}

class DisplayedModel : public ExportTest {};

TEST_F(DisplayedModel, nativePartHasTheTimesOfItsFile) {
    const auto& bolt = addNative("bolt", "bolt.prt", std::string(1048576, 'x'));
    display(bolt);
    const auto metadata = pivra::readDisplayedModelMetadata();
    const auto written = platform::fileFacts(platform::pathFromUtf8(bolt.fullPath))->written;
    EXPECT_EQ(metadata->lastModified, pivra::formatDisplayTime(written));
    EXPECT_EQ(metadata->lastModifiedUtc, pivra::formatUtcTime(written));
    EXPECT_EQ(metadata->uploadFileName, "bolt.prt");
    EXPECT_EQ(metadata->fileSizeMb, 1.0);
    EXPECT_THAT(heads(), Contains("DEBUG NX display metadata read from local source"));
}

TEST_F(DisplayedModel, managedAssemblyHasTheNewestTimeOfItsFiles) {
    addManaged("10");
    auto& frame = addManaged("1", std::string(262144, 'x'));
    place(frame, {"10", "10"});
    const fs::path member = folder.writeFile(exportFolder(frame) / "below" / "10.prt", std::string(524288, 'x'));
    fs::last_write_time(member, fs::file_time_type::clock::now() + std::chrono::hours(1));
    display(frame);
    const auto metadata = pivra::readDisplayedModelMetadata();
    EXPECT_EQ(metadata->fileSizeMb, 0.75);
    EXPECT_EQ(metadata->lastModifiedUtc, pivra::formatUtcTime(platform::fileFacts(member)->written));
}

TEST_F(DisplayedModel, changesSinceTheReadingAreSeen) {
    auto& frame = addNative("frame");
    auto& nut = addNative("nut");
    display(frame);
    const auto metadata = pivra::readDisplayedModelMetadata();
    nut.modified = true;
    nut.fullPath += ".jt";
    place(frame, {"nut"});
    fs::resize_file(platform::pathFromUtf8(frame.fullPath), 1 << 20);
    metadata->uploadBlockedReason = "not saved then";
    pivra::prepareUploadFiles(metadata);
    EXPECT_EQ(metadata->uploadBlockedReason, "");
    EXPECT_EQ(metadata->fileSizeMb, 1.0);
    EXPECT_TRUE(metadata->isAssembly && metadata->hasUnsavedChanges && metadata->hasUnsupportedFileTypes);
}

TEST_F(DisplayedModel, aDrawingIsSentWithoutTheMembersOfTheModel) {
    addNative("nut");
    auto& frame = addNative("frame");
    frame.sheets = {"Sheet 1"};
    frame.components = {{"", "nut", true}, {"", "nut", false}};
    display(frame);
    const auto metadata = pivra::readDisplayedModelMetadata();
    session.applicationModule = 1;
    pivra::prepareUploadFiles(metadata);
    EXPECT_FALSE(metadata->isAssembly || metadata->hasUnloadedComponents);
    EXPECT_THAT(metadata->files, IsEmpty());
}

TEST_F(DisplayedModel, aPreparationThatFailedDoesNotFailTheNext) {
    auto& old = addNative("old");
    old.uniqueIdentifier = "NX8-000017";
    old.save = devkit::SaveOutcome::throws;
    display(old);
    const auto metadata = pivra::readDisplayedModelMetadata();
    EXPECT_THROW(pivra::prepareUploadFiles(metadata), std::runtime_error);
    old.save = devkit::SaveOutcome::saved;
    pivra::prepareUploadFiles(metadata);
    EXPECT_EQ(metadata->traceabilityError, "");
}

class DisplayedModelExport : public ExportTest {
 protected:
    ExportRun run_{IdentifierForm::upload, "key"};
    fs::path base_ = pivra::sessionTempDirectory("key");
};

TEST_F(DisplayedModelExport, copyOfAReadOnlyPartIsReplacedByTheNextRun) {
    for (const char* content : {"first", "second, longer"}) {
        const fs::path source = folder.writeFile("models/bolt.prt", content);
        fs::permissions(source, fs::perms::owner_read);
        ExportRun run(IdentifierForm::upload, "key");
        EXPECT_EQ(pivra::copyLocalModel(utf8FromPath(source), run), utf8FromPath(base_ / "bolt.prt"));
        fs::permissions(source, fs::perms::owner_all);
        EXPECT_EQ(readFile(base_ / "bolt.prt"), content);
    }
    EXPECT_NE(fs::status(base_ / "bolt.prt").permissions() & fs::perms::owner_write, fs::perms::none);
}

TEST_F(DisplayedModelExport, whatIsThereAlreadyIsNotCopied) {
    const fs::path opened = folder.writeFile(base_ / "bolt.prt", "opened from here");
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(pivra::copyLocalModel(utf8FromPath(opened), run_), utf8FromPath(opened));
    }
    EXPECT_EQ(readFile(opened), "opened from here");
    EXPECT_THAT(heads(), ElementsAre("DEBUG Local NX model export reused existing temp file"))
        << "what this run copied a moment ago is no news";
}

TEST_F(DisplayedModelExport, withoutAPartOrItsPathThereIsNone) {
    EXPECT_EQ(pivra::exportDisplayedModel(nullptr, "bolt.prt", run_), "");
    EXPECT_EQ(pivra::copyLocalModel("", run_), "");
    EXPECT_THAT(heads(), ElementsAre("WARNING NX model export skipped because there is no displayed part.",
                                     "WARNING Local NX model export skipped because the source path is empty."));
}

TEST_F(DisplayedModelExport, equalNamesDoNotOverwriteEachOther) {
    const std::pair<const char*, const char*> files[] = {{"a/Bolt.prt", "of a"},     {"b/bolt.PRT", "of b"},
                                                         {"c/bolt.prt", "of c"},     {"a/\u00c9x.prt", "upper"},
                                                         {"b/\u00e9x.prt", "lower"}, {"c/x.prt", "plain"}};
    std::vector<std::string> copies;
    for (const auto& [name, content] : files) {
        const auto file = folder.writeFile(fs::path("models") / platform::pathFromUtf8(name), content);
        copies.push_back(pivra::copyLocalModel(utf8FromPath(file), run_));
    }
    EXPECT_EQ(copies[1], utf8FromPath(base_ / "2" / "bolt.PRT"));
    EXPECT_EQ(copies[2], utf8FromPath(base_ / "3" / "bolt.prt"));
    EXPECT_EQ(copies[5], utf8FromPath(base_ / "x.prt"));
    for (std::size_t i = 0; i < copies.size(); ++i) {
        EXPECT_EQ(readFile(platform::pathFromUtf8(copies[i])), files[i].second) << copies[i];
    }
}

}  // namespace
