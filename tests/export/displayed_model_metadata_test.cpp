#include "export_fixture.h"

#include <export/displayed_model_metadata.h>

#include <map>

namespace {

using namespace export_test;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

constexpr std::chrono::system_clock::time_point epoch{};

TEST(ModelTimes, areFormattedInEnglish) {
    EXPECT_EQ(pivra::formatUtcTime(epoch + 1709210096s), "2024-02-29T12:34:56Z");
    EXPECT_EQ(pivra::formatUtcTime(epoch - 1s), "1969-12-31T23:59:59Z");
    const std::string local = pivra::formatDisplayTime(epoch + 1709210096s);
    EXPECT_THAT(local, testing::AnyOf(testing::StartsWith("February "), testing::StartsWith("March ")));
    EXPECT_THAT(local, testing::HasSubstr(", 2024 - "));
}

TEST(ModelTimes, hoursAndMonthsOfAllKinds) {
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
    }
    EXPECT_EQ(months.size(), 12u);
}

class DisplayedModelMetadata : public ExportTest {
 protected:
    std::string readyLine(const std::string& fields) const { return "INFO NX display metadata ready: " + fields; }
};

TEST_F(DisplayedModelMetadata, nothingDisplayed) {
    const auto metadata = pivra::readDisplayedModelMetadata();
    EXPECT_EQ(metadata->fileName, "No displayed part");
    EXPECT_EQ(metadata->lastModified, "Unknown");
    EXPECT_FALSE(metadata->uploadFileName.has_value());
    EXPECT_THAT(metadata->files, IsEmpty());
    EXPECT_THAT(log(), ElementsAre("WARNING NX metadata read found no displayed part."));
}

TEST_F(DisplayedModelMetadata, nativePart) {
    const auto& bolt = addNative("bolt", "bolt.prt", std::string(1048576, 'x'));
    display(bolt);
    const auto metadata = pivra::readDisplayedModelMetadata();
    const std::string id = bolt.uniqueIdentifier;
    const std::string copy = utf8FromPath(exportFolder(bolt) / "bolt.prt");
    const auto written = platform::lastWriteTime(platform::pathFromUtf8(bolt.fullPath));
    EXPECT_EQ(metadata->fileName, "bolt.prt");
    EXPECT_EQ(metadata->uploadFileName, "bolt.prt");
    EXPECT_EQ(metadata->fileSizeMb, 1.0);
    EXPECT_EQ(metadata->lastModified, pivra::formatDisplayTime(written));
    EXPECT_EQ(metadata->lastModifiedUtc, pivra::formatUtcTime(written));
    EXPECT_EQ(metadata->sourcePath, bolt.fullPath);
    EXPECT_EQ(metadata->sourceFileId, id);
    EXPECT_EQ(metadata->revision, "1");
    EXPECT_EQ(metadata->exportedFile, "");
    EXPECT_FALSE(metadata->hasLegacyId || metadata->isManaged || metadata->isAssembly || metadata->isPartFamily ||
                 metadata->hasUnsavedChanges || metadata->hasUnsupportedFileTypes);
    ASSERT_EQ(metadata->files.size(), 1u);
    EXPECT_EQ(metadata->files[0].uploadPath, copy);
    EXPECT_EQ(metadata->files[0].sourcePath, bolt.fullPath);
    EXPECT_EQ(metadata->files[0].uploadFileName, "bolt.prt");
    EXPECT_EQ(metadata->files[0].sourceFileId, id);
    EXPECT_EQ(metadata->files[0].revision, "1");
    EXPECT_THAT(
        log(),
        ElementsAre(
            "INFO pivra_fix_legacy_id is true (default true).",
            "INFO Reading NX display metadata: " + labelOf(bolt) + " drawing=false managed=false source=\"" +
                bolt.fullPath + "\".",
            "DEBUG NX display metadata read from local source: file_name=\"bolt.prt\" source_file_id=\"" + id +
                "\" size_mb=1.",
            "DEBUG NX export selected local source copy path: " + labelOf(bolt) + " source=\"" + bolt.fullPath + "\".",
            "DEBUG Copying local NX model for upload: source=\"" + bolt.fullPath + "\" destination=\"" + copy + "\".",
            "DEBUG Local NX model export complete: destination=\"" + copy + "\".",
            "INFO Collected local NX upload files: " + labelOf(bolt) + " is_assembly=false files=1 uploaded_files=1.",
            readyLine("file_name=\"bolt.prt\" source_file_id=\"" + id +
                      "\" drawing=false managed=false unsaved=false is_assembly=false unsupported_file_types=false "
                      "files=1 uploaded_files=1 exported_file=\"\".")));
}

TEST_F(DisplayedModelMetadata, partThatWasNeverSaved) {
    const auto& fresh = addNative("model1", "");
    display(fresh);
    const auto metadata = pivra::readDisplayedModelMetadata();
    EXPECT_EQ(metadata->fileName, "model1");
    EXPECT_EQ(metadata->fileSizeMb, 0);
    EXPECT_EQ(metadata->lastModified, "");
    EXPECT_THAT(metadata->files, IsEmpty());
    auto lines = log();
    lines.resize(4);
    EXPECT_THAT(
        lines,
        ElementsAre("INFO pivra_fix_legacy_id is true (default true).",
                    "DEBUG NX part has no usable local source and did not decode as Teamcenter-managed; treating as "
                    "local unsaved part: part=\"model1\" source=\"\".",
                    "INFO Reading NX display metadata: part=\"model1\" drawing=false managed=false source=\"\".",
                    "WARNING NX display metadata found a local part without a saved source file: part=\"model1\" "
                    "source_file_id=\"" +
                        fresh.uniqueIdentifier + "\" source=\"\"."));
    EXPECT_THAT(logLinesOf("WARNING NX display metadata"), testing::SizeIs(1));
}

TEST_F(DisplayedModelMetadata, managedPart) {
    const auto& item = addManaged("4711", std::string(524288, 'x'));
    display(item);
    const auto metadata = pivra::readDisplayedModelMetadata();
    const std::string clone = utf8FromPath(exportFolder(item) / "4711.prt");
    const std::string facts = "file_name=\"4711.prt\" source_file_id=\"" + item.uniqueIdentifier + "\"";
    EXPECT_TRUE(metadata->isManaged);
    EXPECT_EQ(metadata->fileName, "4711.prt");
    EXPECT_EQ(metadata->exportedFile, clone);
    EXPECT_EQ(metadata->fileSizeMb, 0.5);
    EXPECT_EQ(metadata->revision, "B");
    ASSERT_EQ(metadata->files.size(), 1u);
    EXPECT_EQ(metadata->files[0].uploadPath, clone);
    EXPECT_EQ(metadata->files[0].revision, "B");
    EXPECT_THAT(log(), testing::Contains("DEBUG NX display metadata read from managed export: " + facts +
                                         " exported_file=\"" + clone + "\" size_mb=0.5."));
    EXPECT_EQ(log().back(), readyLine(facts +
                                      " drawing=false managed=true unsaved=false is_assembly=false "
                                      "unsupported_file_types=false files=1 uploaded_files=1 exported_file=\"" +
                                      clone + "\"."));
}

TEST_F(DisplayedModelMetadata, managedPartWithoutAClone) {
    session.clone.writesNothing = true;
    const auto& item = addManaged("4711");
    display(item);
    const auto metadata = pivra::readDisplayedModelMetadata();
    EXPECT_EQ(metadata->fileName, item.leaf);
    EXPECT_EQ(metadata->lastModified, "");
    EXPECT_THAT(metadata->files, IsEmpty());
    EXPECT_THAT(log(), testing::Contains("WARNING Managed NX display metadata export produced no local clone: " +
                                         labelOf(item) + " source_file_id=\"" + item.uniqueIdentifier + "\"."));
}

TEST_F(DisplayedModelMetadata, drawingHasNoFilesAndOnlyItsOwnChanges) {
    session.applicationModule = 1;
    addNative("changed").modified = true;
    auto& frame = addNative("frame");
    place(frame, {"changed"});
    frame.familyInstance = true;
    display(frame);
    auto metadata = pivra::readDisplayedModelMetadata();
    EXPECT_FALSE(metadata->isAssembly || metadata->isPartFamily || metadata->hasUnsupportedFileTypes ||
                 metadata->hasUnsavedChanges);
    EXPECT_THAT(metadata->files, IsEmpty());
    frame.modified = true;
    EXPECT_TRUE(pivra::readDisplayedModelMetadata()->hasUnsavedChanges);

    session.applicationModule = 0;
    frame.modified = false;
    metadata = pivra::readDisplayedModelMetadata();
    EXPECT_TRUE(metadata->isAssembly && metadata->isPartFamily && metadata->hasUnsavedChanges);
}

TEST_F(DisplayedModelMetadata, assemblyAddsUpItsFiles) {
    addManaged("10", std::string(1048576, 'x'));
    addManaged("20", std::string(524288, 'x'));
    auto& frame = addManaged("1", std::string(524288, 'x'));
    place(frame, {"10", "20", "20"});
    display(frame);
    const auto metadata = pivra::readDisplayedModelMetadata();
    EXPECT_TRUE(metadata->isAssembly);
    EXPECT_EQ(metadata->files.size(), 3u);
    EXPECT_EQ(metadata->fileSizeMb, 2.0);
    platform::FileTime newest;
    for (const auto& file : metadata->files) {
        newest = std::max(newest, platform::lastWriteTime(platform::pathFromUtf8(file.uploadPath)));
    }
    EXPECT_EQ(metadata->lastModifiedUtc, pivra::formatUtcTime(newest));
}

TEST_F(DisplayedModelMetadata, sizesCountOnlyOrdinaryFiles) {
    const auto file = utf8FromPath(folder.writeFile("models/a.prt", std::string(1048576, 'x')));
    EXPECT_EQ(pivra::totalSizeMb({{file, "elsewhere", "", "", ""},
                                  {"", file, "", "", ""},
                                  {"", "", "", "", ""},
                                  {utf8FromPath(folder.path() / "models"), "", "", "", ""},
                                  {"missing", file, "", "", ""}}),
              2.0);
    EXPECT_THROW(pivra::fileSizeBytes("missing"), fs::filesystem_error);
}

TEST_F(DisplayedModelMetadata, readingWritesToNoPart) {
    auto& bolt = addNative("bolt");
    bolt.uniqueIdentifier = "R-1";
    auto& frame = addNative("frame");
    frame.uniqueIdentifier = "R-2";
    place(frame, {"bolt"});
    display(frame);
    const auto metadata = pivra::readDisplayedModelMetadata();
    EXPECT_TRUE(metadata->hasLegacyId);
    EXPECT_EQ(metadata->sourceFileId, "R-2");
    EXPECT_EQ(metadata->files.at(1).sourceFileId, "R-1");
    EXPECT_EQ(metadata->traceabilityError, "");
    EXPECT_THAT(writes, IsEmpty());
}

}  // namespace
