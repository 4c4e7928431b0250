// A drawing that goes up is in tests/replays/drawing*.json.
#include "export_fixture.h"

#include "export/drawing_pdf_export.h"

namespace {

using namespace export_test;

class DrawingPdfExport : public ExportTest {
 protected:
    DrawingPdfExport() { bolt.sheets = {"SHEET 1"}; }

    std::string exportBolt() {
        return pivra::exportDrawingPdf(display(bolt), bolt.fullPath,
                                       ExportRun(IdentifierForm::upload, bolt.uniqueIdentifier));
    }

    devkit::PartData& bolt = addNative("bolt");
};

TEST_F(DrawingPdfExport, setsUpTheBuilderBeforeItPrints) {
    EXPECT_EQ(exportBolt(), utf8FromPath(exportFolder(bolt) / "bolt.pdf"));
    std::vector<std::string> made;
    for (const auto& call : interceptor.calls()) {
        if (call.find("PrintPDF") != std::string::npos || call.find("Plot") != std::string::npos ||
            call.find("Builder") != std::string::npos) {
            made.emplace_back(call.substr(call.rfind(':') + 1));
        }
    }
    EXPECT_THAT(made, ElementsAre("PlotManager", "CreatePrintPdfbuilder", "SourceBuilder", "SetAction", "SetAppend",
                                  "SetFilename", "SetSheets", "SetSelectedSheets", "Commit", "Destroy"));
}

TEST_F(DrawingPdfExport, onlyAFileWrittenNowCounts) {
    const std::string file = exportBolt();
    setWrittenBefore(platform::pathFromUtf8(file));
    EXPECT_EQ(exportBolt(), file);
    setWrittenBefore(platform::pathFromUtf8(file));
    interceptor.addFault({"NXOpen::PrintPDFBuilder::Commit", 3, 1, "", devkit::FaultKind::null});
    EXPECT_EQ(exportBolt(), "");
    EXPECT_EQ(heads().back(), "WARNING Drawing PDF export did not produce a new or updated file");
}

TEST_F(DrawingPdfExport, hostWithoutABuilderGivesNoFile) {
    EXPECT_EQ(pivra::exportDrawingPdf(nullptr, "", ExportRun(IdentifierForm::upload, "")), "");
    EXPECT_EQ(heads().back(), "WARNING Drawing PDF export skipped because there is no displayed NX part.");
    const std::pair<const char*, std::string> cases[] = {
        {"NXOpen::BasePart::PlotManager", "plot manager"},
        {"NXOpen::PlotManager::CreatePrintPdfbuilder", "PDF source builder"},
        {"NXOpen::PrintPDFBuilder::SourceBuilder", "PDF source builder"}};
    for (const auto& [call, missing] : cases) {
        interceptor.reset();
        interceptor.addFault({call, 1, 1, "", devkit::FaultKind::null});
        EXPECT_EQ(exportBolt(), "");
        EXPECT_EQ(heads().back(), "WARNING Drawing PDF export failed because NX returned no " + missing);
    }
}

TEST_F(DrawingPdfExport, hostFailuresArePassedOnAndTheBuilderEnds) {
    interceptor.addFault({"NXOpen::PrintPDFBuilder::Commit", 1, 1, "no printer"});
    interceptor.addFault({"NXOpen::Builder::Destroy", 1, 1, "no end"});
    EXPECT_THROW(exportBolt(), std::exception);
    EXPECT_EQ(heads().back(), "WARNING PDF builder could not be destroyed");
}

TEST_F(DrawingPdfExport, baseNameIsTheNumberOrAName) {
    addManaged("A/B:1");
    EXPECT_EQ(pivra::drawingPdfBaseName(object("A/B:1"), "x"), "A_B_1");
    const auto baseName = [&](const std::string& leaf, const std::string& source) {
        bolt.leaf = leaf;
        return pivra::drawingPdfBaseName(object("bolt"), source);
    };
    EXPECT_EQ(baseName("Größe.prt", "C:/other.prt"), "Größe");
    EXPECT_EQ(baseName("", R"(C:\m\bo|lt.prt)"), "bo_lt");
    EXPECT_EQ(baseName("", ""), "drawing");
}

}  // namespace
