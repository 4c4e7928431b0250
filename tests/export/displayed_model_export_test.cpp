#include "export_fixture.h"

#include <export/displayed_model_export.h>

namespace {

using namespace export_test;
using pivra::ExportRun;
using pivra::IdentifierForm;
using test_support::readFile;
using testing::ElementsAre;

class DisplayedModelExport : public ExportTest {};

TEST_F(DisplayedModelExport, nativePartIsCopiedAnewInEachRun) {
    const auto& bolt = addNative("bolt", "bolt.prt", "first");
    auto* part = display(bolt);
    const fs::path expected = exportFolder(bolt) / "bolt.prt";
    for (const char* content : {"first", "second, longer"}) {
        folder.writeFile("models/bolt.prt", content);
        ExportRun run(IdentifierForm::upload, bolt.uniqueIdentifier);
        EXPECT_EQ(pivra::exportDisplayedModel(part, bolt.fullPath, run), utf8FromPath(expected));
        EXPECT_EQ(readFile(expected), content);
        fs::permissions(folder.path() / "models/bolt.prt", fs::perms::owner_read);
    }
    EXPECT_NE(fs::status(expected).permissions() & fs::perms::owner_write, fs::perms::none);
    fs::permissions(folder.path() / "models/bolt.prt", fs::perms::owner_all);
    auto lines = log();
    lines.resize(3);
    EXPECT_THAT(lines,
                ElementsAre("DEBUG NX export selected local source copy path: " + labelOf(bolt) + " source=\"" +
                                bolt.fullPath + "\".",
                            "DEBUG Copying local NX model for upload: source=\"" + bolt.fullPath + "\" destination=\"" +
                                utf8FromPath(expected) + "\".",
                            "DEBUG Local NX model export complete: destination=\"" + utf8FromPath(expected) + "\"."));
}

TEST_F(DisplayedModelExport, whatIsThereAlreadyIsNotCopied) {
    auto& bolt = addNative("bolt");
    const fs::path opened = folder.writeFile(exportFolder(bolt) / "bolt.prt", "opened from here");
    bolt.fullPath = utf8FromPath(opened);
    ExportRun run(IdentifierForm::upload, bolt.uniqueIdentifier);
    EXPECT_EQ(pivra::copyLocalModel(bolt.fullPath, run), bolt.fullPath);
    EXPECT_EQ(pivra::copyLocalModel(bolt.fullPath, run), bolt.fullPath);
    EXPECT_EQ(readFile(opened), "opened from here");
    EXPECT_THAT(log(),
                ElementsAre("DEBUG Local NX model export reused existing temp file: path=\"" + bolt.fullPath + "\"."))
        << "what this run copied a moment ago is no news";
}

TEST_F(DisplayedModelExport, equalNamesDoNotOverwriteEachOther) {
    const std::pair<const char*, const char*> files[] = {{"a/Bolt.prt", "of a"},
                                                         {"b/bolt.PRT", "of b"},
                                                         {"c/bolt.prt", "of c"},
                                                         {"a/\u00c9x.prt", "upper"},
                                                         {"b/\u00e9x.prt", "lower"}};
    ExportRun run(IdentifierForm::upload, "key");
    std::vector<std::string> copies;
    for (const auto& [name, content] : files) {
        const auto file = folder.writeFile(fs::path("models") / platform::pathFromUtf8(name), content);
        copies.push_back(pivra::copyLocalModel(utf8FromPath(file), run));
    }
    const fs::path base = exportFolder("key");
    EXPECT_EQ(copies[1], utf8FromPath(base / "2" / "bolt.PRT"));
    EXPECT_EQ(copies[2], utf8FromPath(base / "3" / "bolt.prt"));
    for (std::size_t i = 0; i < copies.size(); ++i) {
        EXPECT_EQ(readFile(platform::pathFromUtf8(copies[i])), files[i].second) << copies[i];
    }
}

TEST_F(DisplayedModelExport, skipsSayWhy) {
    const auto& unsaved = addNative("unsaved", "");
    ExportRun run(IdentifierForm::upload, "key");
    EXPECT_EQ(pivra::exportDisplayedModel(nullptr, "x", run), "");
    EXPECT_EQ(pivra::exportDisplayedModel(display(unsaved), "nowhere.prt", run), "");
    EXPECT_EQ(pivra::copyLocalModel("", run), "");
    EXPECT_THAT(log(), ElementsAre("WARNING NX model export skipped because there is no displayed part.",
                                   "WARNING NX export skipped because the local part has not been saved to disk: "
                                   "part=\"unsaved\" source=\"nowhere.prt\".",
                                   "WARNING Local NX model export skipped because the source path is empty."));
}

TEST_F(DisplayedModelExport, failedCopyIsRaised) {
    ExportRun run(IdentifierForm::upload, "key");
    const std::string missing = utf8FromPath(folder.path() / "models" / "gone.prt");
    try {
        pivra::copyLocalModel(missing, run);
        FAIL() << "nothing was raised";
    } catch (const fs::filesystem_error& error) {
        EXPECT_EQ(utf8FromPath(error.path1()), missing);
        EXPECT_EQ(error.path2(), exportFolder("key") / "gone.prt");
    }
}

TEST_F(DisplayedModelExport, drawingWinsOverManagedAndManagedOverNative) {
    auto& item = addManaged("4711");
    item.sheets = {"SHEET 1"};
    auto* part = display(item);
    ExportRun run(IdentifierForm::upload, item.uniqueIdentifier);
    EXPECT_EQ(pivra::exportDisplayedModel(part, item.fullPath, run), utf8FromPath(exportFolder(item) / "4711.prt"));
    EXPECT_EQ(log().front(),
              "INFO NX export selected managed clone path: " + labelOf(item) + " source=\"" + item.fullPath + "\".");
    session.applicationModule = 1;
    EXPECT_EQ(pivra::exportDisplayedModel(part, item.fullPath, run), utf8FromPath(exportFolder(item) / "4711.pdf"));
    EXPECT_THAT(
        logLinesOf("INFO NX export selected drawing PDF path: " + labelOf(item) + " source=\"" + item.fullPath + "\"."),
        testing::SizeIs(1));
}

}  // namespace
