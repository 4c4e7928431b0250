#include "export_fixture.h"

#include <export/displayed_model_metadata.h>
#include <export/upload_preparation.h>

namespace {

using namespace export_test;
using test_support::readFile;
using testing::Contains;
using testing::IsEmpty;
using testing::SizeIs;

class UploadPreparation : public ExportTest {
 protected:
    std::shared_ptr<pivra::ModelMetadata> readThenPrepare() {
        const auto metadata = pivra::readDisplayedModelMetadata();
        pivra::prepareUploadFiles(metadata);
        return metadata;
    }
    static std::string running(const std::string& reason, const devkit::PartData& part) {
        return "INFO Running NX export before upload: reason=" + reason + " " + labelOf(part) + ".";
    }
};

TEST_F(UploadPreparation, nativePartIsCopiedAnewEachTime) {
    const auto& bolt = addNative("bolt", "bolt.prt", "old");
    display(bolt);
    const auto metadata = pivra::readDisplayedModelMetadata();
    folder.writeFile("models/bolt.prt", std::string(1048576, 'n'));
    const auto linesBefore = static_cast<std::ptrdiff_t>(log().size());
    pivra::prepareUploadFiles(metadata);
    const std::string copy = utf8FromPath(exportFolder(bolt) / "bolt.prt");
    EXPECT_EQ(metadata->exportedFile, copy);
    EXPECT_EQ(metadata->sourceFileId, bolt.uniqueIdentifier);
    EXPECT_EQ(metadata->uploadBlockedReason, "");
    EXPECT_EQ(metadata->fileSizeMb, 1.0);
    ASSERT_THAT(metadata->files, SizeIs(1));
    EXPECT_EQ(readFile(platform::pathFromUtf8(metadata->files[0].uploadPath)).size(), 1048576u);

    auto lines = log();
    lines.erase(lines.begin(), lines.begin() + linesBefore);
    EXPECT_EQ(lines.front(), "INFO Preparing NX upload files: " + labelOf(bolt) +
                                 " drawing=false managed=false unsaved=false cached_export=\"\" source=\"" +
                                 bolt.fullPath + "\".");
    EXPECT_EQ(lines[1], running("local_source", bolt));
    EXPECT_THAT(lines,
                Contains("INFO NX export before upload complete: reason=local_source exported_file=\"" + copy + "\"."));
    EXPECT_EQ(lines.back(), "INFO Prepared NX upload files: file_name=\"bolt.prt\" source_file_id=\"" +
                                bolt.uniqueIdentifier +
                                "\" drawing=false managed=false is_assembly=false "
                                "exported_file=\"" +
                                copy + "\" files=1 uploaded_files=1.");
    EXPECT_EQ(
        std::count_if(lines.begin(), lines.end(), [](const auto& line) { return line.rfind("DEBUG Copying", 0) == 0; }),
        1);
}

TEST_F(UploadPreparation, recordStaysWithoutADisplayedPart) {
    const auto metadata = std::make_shared<pivra::ModelMetadata>();
    metadata->fileName = "as it was";
    metadata->uploadBlockedReason = "as it was";
    pivra::prepareUploadFiles(metadata);
    EXPECT_EQ(metadata->fileName, "as it was");
    EXPECT_EQ(metadata->uploadBlockedReason, "as it was");
    EXPECT_THAT(log(),
                testing::ElementsAre("WARNING NX upload preparation skipped because there is no displayed part."));
}

TEST_F(UploadPreparation, partThatWasNeverSavedIsBlockedUntouched) {
    auto& fresh = addNative("model1", "");
    fresh.uniqueIdentifier = "legacy";
    display(fresh);
    const auto metadata = std::make_shared<pivra::ModelMetadata>();
    metadata->exportedFile = "stale";
    metadata->files.resize(2);
    pivra::prepareUploadFiles(metadata);
    EXPECT_EQ(metadata->uploadBlockedReason, "Save the NX file before uploading to Pivra.");
    EXPECT_EQ(metadata->exportedFile, "");
    EXPECT_THAT(metadata->files, IsEmpty());
    EXPECT_THAT(writes, IsEmpty());
    EXPECT_EQ(log().back(),
              "WARNING NX upload preparation stopped because the native model has no saved local source file: "
              "part=\"model1\" source=\"\".");

    fresh.fullPath = utf8FromPath(folder.writeFile("models/model1.prt", "saved now"));
    pivra::prepareUploadFiles(metadata);
    EXPECT_EQ(metadata->uploadBlockedReason, "");
    EXPECT_THAT(metadata->files, SizeIs(1));
}

TEST_F(UploadPreparation, managedPartIsClonedOnceForDisplayAndUploads) {
    auto& frame = addManaged("10");
    addManaged("20");
    place(frame, {"20"});
    display(frame);
    const auto metadata = pivra::readDisplayedModelMetadata();
    pivra::prepareUploadFiles(metadata);
    pivra::prepareUploadFiles(metadata);
    EXPECT_EQ(calls("UF_CLONE_perform_clone"), 1u);
    EXPECT_THAT(metadata->files, SizeIs(2));
    EXPECT_THAT(logLinesOf("INFO Reusing cached managed NX export before upload: exported_file=\"" +
                           metadata->exportedFile + "\"."),
                SizeIs(2));

    fs::remove(platform::pathFromUtf8(metadata->exportedFile));
    pivra::prepareUploadFiles(metadata);
    EXPECT_THAT(log(), Contains(running("missing_cached_managed_export", frame)));
    EXPECT_THAT(metadata->files, SizeIs(2));
}

TEST_F(UploadPreparation, repairedManagedPartIsClonedAgainUnderItsNewIdentifier) {
    auto& item = addManaged("4711");
    item.uniqueIdentifier = "legacy";
    display(item);
    const auto metadata = pivra::readDisplayedModelMetadata();
    EXPECT_EQ(metadata->sourceFileId, "legacy");
    pivra::prepareUploadFiles(metadata);
    EXPECT_EQ(metadata->sourceFileId, item.attributes.at("PIVRA_ID"));
    EXPECT_EQ(metadata->exportedFile, utf8FromPath(exportFolder(metadata->sourceFileId) / "4711.prt"));
    EXPECT_TRUE(fs::exists(platform::pathFromUtf8(metadata->files.at(0).uploadPath)));
    EXPECT_EQ(metadata->files[0].sourceFileId, metadata->sourceFileId);
    EXPECT_THAT(log(), Contains(running("traceability_changed", item)));
    EXPECT_EQ(calls("UF_CLONE_perform_clone"), 2u);
    pivra::prepareUploadFiles(metadata);
    EXPECT_EQ(calls("UF_CLONE_perform_clone"), 2u);
}

TEST_F(UploadPreparation, cleanedUpManagedPartIsClonedAgainInItsFolder) {
    auto& item = addManaged("4711");
    item.attributes["PIVRA_ID"] = parts_test::otherUuid;
    display(item);
    const auto metadata = readThenPrepare();
    EXPECT_THAT(item.attributes, IsEmpty());
    EXPECT_EQ(metadata->exportedFile, utf8FromPath(exportFolder(item) / "4711.prt"));
    EXPECT_THAT(log(), Contains(running("traceability_changed", item)));
}

TEST_F(UploadPreparation, repairThatFailsIsRaisedAfterTheRecordIsComplete) {
    auto& bolt = addNative("bolt");
    bolt.uniqueIdentifier = "legacy";
    bolt.save = devkit::SaveOutcome::unsavedParts;
    addNative("nut");
    place(bolt, {"nut", "nut"});
    display(bolt);
    const auto metadata = pivra::readDisplayedModelMetadata();
    const std::string message = "Legacy file(s) detected. Unable to upload because PIVRA_ID could not be saved for " +
                                bolt.fullPath + " (bolt).";
    try {
        pivra::prepareUploadFiles(metadata);
        FAIL() << "nothing was raised";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(error.what(), message);
    }
    EXPECT_EQ(metadata->traceabilityError, message);
    EXPECT_EQ(metadata->sourceFileId, "");
    EXPECT_EQ(bolt.attributes.at("PIVRA_ID"), "");
    EXPECT_EQ(calls("NXOpen::BasePart::Save"), 1u);
    EXPECT_THAT(log().back(), testing::StartsWith("INFO Prepared NX upload files: "));

    bolt.save = devkit::SaveOutcome::saved;
    pivra::prepareUploadFiles(metadata);
    EXPECT_EQ(metadata->traceabilityError, "");
    EXPECT_EQ(metadata->sourceFileId, bolt.attributes.at("PIVRA_ID"));
}

TEST_F(UploadPreparation, drawingIsPrintedAndHasNoFiles) {
    auto& frame = addNative("frame");
    addNative("nut");
    place(frame, {"nut"});
    frame.sheets = {"SHEET 1"};
    session.applicationModule = 1;
    display(frame);
    auto metadata = readThenPrepare();
    EXPECT_EQ(metadata->exportedFile, utf8FromPath(exportFolder(frame) / "frame.pdf"));
    EXPECT_THAT(metadata->files, IsEmpty());
    EXPECT_FALSE(metadata->isAssembly);
    EXPECT_THAT(log(), Contains(running("drawing", frame)));

    frame.sheets.clear();
    metadata = readThenPrepare();
    EXPECT_EQ(metadata->exportedFile, "");
    EXPECT_THAT(metadata->files, IsEmpty());
    EXPECT_FALSE(metadata->isAssembly);
    EXPECT_THAT(log(), Contains("WARNING NX export before upload produced no root file: reason=drawing " +
                                labelOf(frame) + "."));
}

TEST_F(UploadPreparation, changesSinceTheReadingAreSeen) {
    auto& frame = addNative("frame");
    auto& nut = addNative("nut");
    display(frame);
    const auto metadata = pivra::readDisplayedModelMetadata();
    nut.modified = true;
    nut.fullPath += ".jt";
    place(frame, {"nut"});
    pivra::prepareUploadFiles(metadata);
    EXPECT_TRUE(metadata->isAssembly && metadata->hasUnsavedChanges && metadata->hasUnsupportedFileTypes);
}

}  // namespace
