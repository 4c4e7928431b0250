#include "export_fixture.h"

#include <export/drawing_pdf_export.h>

namespace {

using namespace export_test;
using pivra::ExportRun;
using pivra::IdentifierForm;
using testing::ElementsAre;

class DrawingPdfExport : public ExportTest {
 protected:
    std::string exportPart(const devkit::PartData& part) {
        return pivra::exportDrawingPdf(display(part), part.fullPath,
                                       ExportRun(IdentifierForm::upload, part.uniqueIdentifier));
    }
};

TEST_F(DrawingPdfExport, allSheetsGoIntoOneFile) {
    auto& bolt = addNative("bolt");
    bolt.sheets = {"SHEET 1", "SHEET 2", "SHEET 3"};
    const fs::path file = exportFolder(bolt) / "bolt.pdf";
    gate.reset();
    EXPECT_EQ(exportPart(bolt), utf8FromPath(file));
    EXPECT_THAT(test_support::readFile(file), testing::HasSubstr("/Count 3"));
    EXPECT_THAT(log(), ElementsAre("INFO Starting NX drawing PDF export: " + labelOf(bolt) +
                                       " sheets=3 destination=\"" + utf8FromPath(file) + "\".",
                                   "INFO NX drawing PDF export complete: destination=\"" + utf8FromPath(file) + "\"."));
    std::vector<std::string> made;
    for (const auto& call : gate.calls()) {
        if (call.find("PrintPDF") != std::string::npos || call.find("Plot") != std::string::npos ||
            call.find("Builder") != std::string::npos) {
            made.push_back(call.substr(call.rfind(':') + 1));
        }
    }
    EXPECT_THAT(made, ElementsAre("PlotManager", "CreatePrintPdfbuilder", "SourceBuilder", "SetAction", "SetAppend",
                                  "SetFilename", "SetSheets", "SetSelectedSheets", "Commit", "Destroy"));
}

TEST_F(DrawingPdfExport, onlyAFileWrittenNowCounts) {
    auto& bolt = addNative("bolt");
    bolt.sheets = {"SHEET 1"};
    const std::string file = exportPart(bolt);
    setWrittenBefore(platform::pathFromUtf8(file));
    EXPECT_EQ(exportPart(bolt), file);
    setWrittenBefore(platform::pathFromUtf8(file));
    gate.addFault({"NXOpen::PrintPDFBuilder::Commit", 3, 1, "", true});
    EXPECT_EQ(exportPart(bolt), "");
    EXPECT_EQ(log().back(), "WARNING Drawing PDF export did not produce a new or updated file: " + labelOf(bolt) +
                                " destination=\"" + file + "\".");
}

TEST_F(DrawingPdfExport, refusalsSayWhy) {
    auto& bolt = addNative("bolt");
    const std::string fields =
        labelOf(bolt) + " destination=\"" + utf8FromPath(exportFolder(bolt) / "bolt.pdf") + "\".";
    EXPECT_EQ(pivra::exportDrawingPdf(nullptr, "", ExportRun(IdentifierForm::upload, "")), "");
    EXPECT_EQ(exportPart(bolt), "");
    EXPECT_THAT(log(), ElementsAre("WARNING Drawing PDF export skipped because there is no displayed NX part.",
                                   "WARNING Drawing PDF export skipped because no drawing sheets were found: " +
                                       labelOf(bolt) + " source=\"" + bolt.fullPath + "\"."));
    bolt.sheets = {"SHEET 1"};
    gate.addFault({"NXOpen::BasePart::PlotManager", 1, 1, "", true});
    EXPECT_EQ(exportPart(bolt), "");
    EXPECT_EQ(log().back(), "WARNING Drawing PDF export failed because NX returned no plot manager: " + fields);
    for (const char* call : {"NXOpen::PlotManager::CreatePrintPdfbuilder", "NXOpen::PrintPDFBuilder::SourceBuilder"}) {
        gate.reset();
        gate.addFault({call, 1, 1, "", true});
        EXPECT_EQ(exportPart(bolt), "");
        EXPECT_EQ(log().back(),
                  "WARNING Drawing PDF export failed because NX returned no PDF source builder: " + fields);
    }
}

TEST_F(DrawingPdfExport, hostFailuresArePassedOnAndTheBuilderEnds) {
    auto& bolt = addNative("bolt");
    bolt.sheets = {"SHEET 1"};
    gate.addFault({"NXOpen::PrintPDFBuilder::Commit", 1, 1, "no printer"});
    gate.addFault({"NXOpen::Builder::Destroy", 1, 1, "no end"});
    EXPECT_THROW(exportPart(bolt), std::exception);
    EXPECT_EQ(log().back(), "WARNING PDF builder could not be destroyed: error=\"no end\".");
}

TEST_F(DrawingPdfExport, baseNameIsTheNumberOrAName) {
    addManaged("A/B:1");
    EXPECT_EQ(pivra::drawingPdfBaseName(object("A/B:1"), "x"), "A_B_1");
    auto& part = addNative("part", "");
    const auto baseName = [&](const std::string& leaf, const std::string& source) {
        part.leaf = leaf;
        return pivra::drawingPdfBaseName(object("part"), source);
    };
    EXPECT_EQ(baseName("Größe.prt", "C:/other.prt"), "Größe");
    EXPECT_EQ(baseName("", R"(C:\m\bo|lt.prt)"), "bo_lt");
    EXPECT_EQ(baseName("", ""), "drawing");
}

}  // namespace
