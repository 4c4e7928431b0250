// What the host writes for the plug-in: cloned parts and PDF files.
#include <uf_clone.h>
#include <NXOpen/Drawings_DrawingSheetCollection.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/PlotManager.hxx>
#include <NXOpen/PrintPDFBuilder.hxx>
#include "platform/text_encoding.h"

#include "host_fixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class NxopenExport : public devkit_test::HostTest {
 protected:
    void setUpClone() {
        const std::string directory = platform::fileSystemTextFromPath(folder.path());
        char base[] = "P-${DB_PART_NO}";
        UF_CLONE_name_rule_def_t rule{UF_CLONE_replace_string, base, base};
        EXPECT_EQ(UF_CLONE_initialise(UF_CLONE_export_operation), 0);
        EXPECT_EQ(UF_CLONE_set_def_action(UF_CLONE_overwrite), 0);
        EXPECT_EQ(UF_CLONE_set_def_directory(directory.c_str()), 0);
        EXPECT_EQ(UF_CLONE_set_def_naming(UF_CLONE_naming_rule), 0);
        EXPECT_EQ(UF_CLONE_set_name_rule(&rule, &failures), 0);
    }

    const devkit_test::Bracket bracket;
    UF_CLONE_naming_failures_t failures{};
};

TEST_F(NxopenExport, namesClonedFilesByTheRuleAndMembersThatAreMissing) {
    load(R"({"parts": [{"name": "native", "path": "/native.prt"}, {"name": "top", "contents": "t",
                        "managed": {"number": "1", "revision": "A"}, "components": ["native"]}]})");
    setUpClone();
    folder.writeFile("P-1.prt", "old");
    UF_PART_load_status_t loaded{};
    EXPECT_EQ(UF_CLONE_add_assembly("@DB/1/A", &loaded), 0);
    ASSERT_EQ(loaded.n_parts, 1);
    EXPECT_STREQ(loaded.file_names[0], "native");
    EXPECT_EQ(loaded.statuses[0], UF_CLONE_err_comp_not_found);
    EXPECT_EQ(UF_PART_free_load_status(&loaded), 0);
    EXPECT_EQ(UF_CLONE_perform_clone(&failures), 0);
    EXPECT_EQ(test_support::readFile(folder.path() / "P-1.prt"), "t");
    EXPECT_THAT(events, ElementsAre(R"(clone {"files":["P-1.prt"],"part":"top"})"));
}

TEST_F(NxopenExport, printsTheSheetsOfThePartItself) {
    addPart("bolt").sheets = {"Sheet (1)", "größe"};
    addPart("nut").sheets = {"S"};
    auto* part = dynamic_cast<NXOpen::Part*>(session.object("bolt"));
    auto* other = dynamic_cast<NXOpen::Part*>(session.object("nut"));
    auto* sheets = part->DrawingSheets()->begin();
    auto* builder = part->PlotManager()->CreatePrintPdfbuilder();
    auto* source = builder->SourceBuilder();
    const auto commit = [&](const std::vector<NXOpen::NXObject*>& chosen, int count) {
        source->SetSheets(chosen);
        source->SetSelectedSheets(count);
        builder->Commit();
    };
    EXPECT_THROW(commit({sheets[0], sheets[1]}, 2), NXOpen::NXException) << "it has no file name";
    builder->SetAction(NXOpen::PrintPDFBuilder::ActionOptionNative);
    builder->SetFilename(platform::fileSystemTextFromPath(folder.path() / u8"ü.pdf"));
    EXPECT_THROW(commit({sheets[0], *other->DrawingSheets()->begin()}, 2), NXOpen::NXException);
    EXPECT_THROW(commit({sheets[0], sheets[1]}, 1), NXOpen::NXException);
    commit({sheets[0], sheets[1]}, 2);
    interceptor.addFault({"NXOpen::Builder::Destroy", 1, 1, "Busy."});
    EXPECT_THROW(builder->Destroy(), NXOpen::NXException);
    EXPECT_EQ(devkit::liveObjects(), 0);

    const std::string pdf = test_support::readFile(folder.path() / u8"ü.pdf");
    EXPECT_THAT(pdf, testing::AllOf(HasSubstr("/Count 2"), HasSubstr("(Sheet \\(1\\)) Tj"), HasSubstr("(gr??e) Tj")));
    const auto table = pdf.find("\nxref\n0 8\n") + 1;
    EXPECT_THAT(pdf, HasSubstr("startxref\n" + std::to_string(table) + "\n"));
    for (std::size_t object = 1; object < 8; ++object) {
        const auto place = std::stoul(pdf.substr(table + 9 + 20 * object, 10));
        EXPECT_EQ(pdf.compare(place, 7, std::to_string(object) + " 0 obj"), 0) << object;
    }
    EXPECT_THAT(events, ElementsAre(R"-(pdf {"file":"ü.pdf","part":"bolt","sheets":["Sheet (1)","größe"]})-"));
}

}  // namespace
