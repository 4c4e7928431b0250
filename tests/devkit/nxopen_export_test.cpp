#include <platform/text_encoding.h>
#include <uf_clone.h>
#include <uf_ugmgr.h>
#include <NXOpen/Drawings_DrawingSheetCollection.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/PlotManager.hxx>
#include <NXOpen/PrintPDFBuilder.hxx>

#include <algorithm>
#include <fstream>

#include "host_fixture.h"

namespace {

using devkit_test::Bracket;
using testing::ElementsAre;
using testing::HasSubstr;

class NxopenExport : public devkit_test::HostTest {
 protected:
    std::vector<std::string> filesIn(const std::string& name) const {
        std::vector<std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path() / name)) {
            files.push_back(platform::utf8FromPath(entry.path().filename()) + ": " +
                            test_support::readFile(entry.path()));
        }
        std::sort(files.begin(), files.end());
        return files;
    }
};

std::vector<std::string> decode(const char* name) {
    char number[UF_UGMGR_PARTNO_BUFSIZE] = "";
    char revision[UF_UGMGR_PARTREV_BUFSIZE] = "";
    char type[UF_UGMGR_FTYPE_BUFSIZE] = "";
    char file[UF_UGMGR_FNAME_BUFSIZE] = "";
    if (UF_UGMGR_decode_part_file_name(name, number, revision, type, file) != 0) return {};
    return {number, revision, type, file};
}

TEST_F(NxopenExport, decodesNamesOfManagedParts) {
    const Bracket bracket;
    EXPECT_THAT(decode("@DB/000123/A"), ElementsAre("000123", "A", "", ""));
    EXPECT_THAT(decode("@DB/000123/A/manifestation/m1"), ElementsAre("000123", "A", "manifestation", "m1"));
    EXPECT_THAT(decode("@DB/000123"), ElementsAre("000123", "", "", ""));
    EXPECT_THAT(decode("%UGMGR=V3.2 PN=A/B 1 PRN=B AT=master AN=a b"), ElementsAre("A/B 1", "B", "master", "a b"));
    EXPECT_THAT(decode("%UGMGR=V3.2 PRN=B"), ElementsAre("", "B", "", ""));
    EXPECT_THAT(decode("C:\\models\\bolt.prt"), ElementsAre());
    EXPECT_THAT(decode(""), ElementsAre());
    EXPECT_THAT(decode(("@DB/" + std::string(UF_UGMGR_PARTNO_BUFSIZE, '1')).c_str()), ElementsAre());
}

TEST_F(NxopenExport, leadsFromANumberToTheConfiguredRevision) {
    load(R"({"parts": [{"name": "item", "managed": {"number": "000123", "configuredRevision": "C"}}]})");
    const Bracket bracket;
    char number[] = "000123";
    char unknown[] = "000124";
    UF_UGMGR_tag_t part{};
    UF_UGMGR_tag_t revision{};
    char id[UF_UGMGR_NAME_BUFSIZE] = "";
    EXPECT_EQ(UF_UGMGR_ask_part_tag(number, &part), 0);
    EXPECT_NE(UF_UGMGR_ask_part_revision_id(part, id), 0);
    EXPECT_EQ(UF_UGMGR_ask_configured_rev(part, &revision), 0);
    EXPECT_EQ(UF_UGMGR_ask_part_revision_id(revision, id), 0);
    EXPECT_STREQ(id, "C");
    EXPECT_NE(UF_UGMGR_ask_part_tag(unknown, &part), 0);
    EXPECT_NE(UF_UGMGR_ask_configured_rev(session.object("item")->Tag(), &revision), 0);
}

/// A clone session as far as its settings.
class NxopenClone : public NxopenExport {
 protected:
    NxopenClone() {
        load(R"({"parts": [
            {"name": "top", "managed": {"number": "1", "revision": "A"}, "contents": "t",
             "components": ["mid", "mid", "native", null]},
            {"name": "mid", "managed": {"number": "2", "revision": "A"}, "contents": "m", "components": ["top"]},
            {"name": "native", "path": "/native.prt"}]})");
        std::filesystem::create_directory(folder.path() / "out");
    }
    ~NxopenClone() override { UF_CLONE_terminate(); }

    void setUp(const char* base = "${DB_PART_NO}") {
        const std::string directory = platform::fileSystemTextFromPath(folder.path() / "out");
        char nothing[] = "";
        std::string text = base;
        UF_CLONE_name_rule_def_t rule{UF_CLONE_replace_string, text.data(), nothing};
        EXPECT_EQ(UF_CLONE_initialise(static_cast<UF_CLONE_operation_class_t>(3)), 0);
        EXPECT_EQ(UF_CLONE_init_naming_failures(&failures), 0);
        EXPECT_EQ(UF_CLONE_set_def_action(static_cast<UF_CLONE_action_t>(3)), 0);
        EXPECT_EQ(UF_CLONE_set_def_directory(directory.c_str()), 0);
        EXPECT_EQ(UF_CLONE_set_assoc_file_root_dir(directory.c_str()), 0);
        EXPECT_EQ(UF_CLONE_set_family_treatment(static_cast<UF_CLONE_family_treatment_t>(1)), 0);
        EXPECT_EQ(UF_CLONE_set_def_naming(static_cast<UF_CLONE_naming_technique_t>(2)), 0);
        EXPECT_EQ(UF_CLONE_set_name_rule(&rule, &failures), 0);
        EXPECT_EQ(UF_CLONE_set_dryrun(false), 0);
    }

    const Bracket bracket;
    UF_CLONE_naming_failures_t failures{};
};

TEST_F(NxopenClone, exportsAnAssemblyWithItsMembers) {
    setUp();
    folder.writeFile("out/2.prt", "old");
    UF_PART_load_status_t loaded{};
    EXPECT_EQ(UF_CLONE_add_assembly("@DB/1/A", &loaded), 0);
    EXPECT_TRUE(loaded.failed);
    ASSERT_EQ(loaded.n_parts, 1);
    EXPECT_STREQ(loaded.file_names[0], "native");
    EXPECT_EQ(loaded.statuses[0], UF_CLONE_err_comp_not_found);
    EXPECT_EQ(UF_PART_free_load_status(&loaded), 0);
    EXPECT_EQ(UF_CLONE_apply_defaults(&failures), 0);
    EXPECT_EQ(UF_CLONE_perform_clone(&failures), 0);
    EXPECT_EQ(failures.n_failures, 0);
    EXPECT_THAT(filesIn("out"), ElementsAre("1.prt: t", "2.prt: m"));
    EXPECT_THAT(events, ElementsAre(R"(clone {"files":["1.prt","2.prt"],"part":"top"})"));
}

TEST_F(NxopenClone, exportsOnePartUnderAnotherNameOrNotAtAll) {
    session.clone.rootName = "other.prt";
    setUp();
    EXPECT_EQ(UF_CLONE_add_part("%UGMGR=V3.2 PN=1 PRN=A"), 0);
    EXPECT_EQ(UF_CLONE_perform_clone(&failures), 0);
    session.clone.writesNothing = true;
    session.clone.rootName = "third.prt";
    EXPECT_EQ(UF_CLONE_perform_clone(&failures), 0);
    EXPECT_THAT(filesIn("out"), ElementsAre("other.prt: t"));
}

TEST_F(NxopenClone, reportsNamingFailuresInMemoryOfItsOwn) {
    setUp();
    session.clone.namingFailures = 2;
    EXPECT_EQ(UF_CLONE_add_part("@DB/1/A"), 0);
    EXPECT_EQ(UF_CLONE_perform_clone(&failures), UF_CLONE_err_naming_failures);
    ASSERT_EQ(failures.n_failures, 2);
    EXPECT_STREQ(failures.input_names[1], "@DB/input1/A");
    EXPECT_STREQ(failures.output_names[0], "output0");
    EXPECT_EQ(failures.output_names[1], nullptr);
    UF_free(failures.statuses);
    UF_free_string_array(2, failures.input_names);
    UF_free_string_array(2, failures.output_names);
}

TEST_F(NxopenClone, refusesWhatIsOutOfOrder) {
    UF_CLONE_name_rule_def_t rule{};
    EXPECT_EQ(UF_CLONE_add_part("@DB/1/A"), UF_CLONE_err_not_active);
    EXPECT_EQ(UF_CLONE_perform_clone(&failures), UF_CLONE_err_not_active);
    EXPECT_EQ(UF_CLONE_terminate(), UF_CLONE_err_not_active);
    EXPECT_EQ(UF_CLONE_initialise(UF_CLONE_import_operation), UF_CLONE_err_invalid_setting);
    EXPECT_EQ(UF_CLONE_initialise(UF_CLONE_export_operation), 0);
    EXPECT_EQ(UF_CLONE_initialise(UF_CLONE_export_operation), UF_CLONE_err_active);
    EXPECT_EQ(UF_CLONE_set_def_action(UF_CLONE_clone), UF_CLONE_err_invalid_setting);
    EXPECT_EQ(UF_CLONE_set_name_rule(&rule, &failures), UF_CLONE_err_invalid_setting);
    EXPECT_EQ(UF_CLONE_set_dryrun(true), UF_CLONE_err_invalid_setting);
    EXPECT_EQ(UF_CLONE_perform_clone(&failures), UF_CLONE_err_nothing_added);
    EXPECT_EQ(UF_CLONE_add_part("@DB/9/A"), UF_CLONE_err_part_not_found);
    EXPECT_EQ(UF_CLONE_add_part("/native.prt"), UF_CLONE_err_part_not_found);
    EXPECT_EQ(UF_CLONE_add_part("@DB/1/A"), 0);
    UF_CLONE_terminate();
    setUp();
    EXPECT_EQ(UF_CLONE_perform_clone(&failures), UF_CLONE_err_nothing_added);
    EXPECT_EQ(UF_CLONE_set_def_directory("/no/such/directory"), 0);
    EXPECT_EQ(UF_CLONE_add_part("@DB/1/A"), 0);
    EXPECT_EQ(UF_CLONE_perform_clone(&failures), UF_CLONE_err_write_failed);
}

/// Offsets in the table of a PDF must point at their objects, or viewers refuse the file.
void expectSoundPdf(const std::string& pdf, int objects) {
    const std::size_t table = pdf.find("\nxref\n") + 1;
    EXPECT_THAT(pdf, HasSubstr("startxref\n" + std::to_string(table) + "\n%%EOF"));
    for (int i = 1; i <= objects; ++i) {
        const std::size_t line = pdf.find('\n', pdf.find('\n', table) + 1) + 1 + static_cast<std::size_t>(i) * 20;
        const std::size_t place = std::stoul(pdf.substr(line, 10));
        EXPECT_EQ(pdf.compare(place, 7, std::to_string(i) + " 0 obj"), 0) << i;
    }
}

TEST_F(NxopenExport, printsAPageForEachSheet) {
    addPart("bolt").sheets = {"Sheet (1)", "größe"};
    addPart("nut").sheets = {"S"};
    auto* part = dynamic_cast<NXOpen::Part*>(session.object("bolt"));
    auto* other = dynamic_cast<NXOpen::Part*>(session.object("nut"));
    std::vector<NXOpen::NXObject*> sheets;
    for (auto it = part->DrawingSheets()->begin(); it != part->DrawingSheets()->end(); it++) sheets.push_back(*it);
    std::vector<NXOpen::NXObject*> foreign{*other->DrawingSheets()->begin()};

    const auto file = (folder.path() / u8"zeichnung ü.pdf").u8string();
    const std::string name(file.begin(), file.end());
    auto* builder = part->PlotManager()->CreatePrintPdfbuilder();
    EXPECT_THROW(builder->Commit(), NXOpen::NXException);
    builder->SetAction(static_cast<NXOpen::PrintPDFBuilder::ActionOption>(3));
    builder->SetAppend(false);
    builder->SetFilename(NXOpen::NXString(platform::utf8FromPath(file), NXOpen::NXString::UTF8));
    builder->SourceBuilder()->SetSheets(foreign);
    builder->SourceBuilder()->SetSelectedSheets(1);
    EXPECT_THROW(builder->Commit(), NXOpen::NXException);
    builder->SourceBuilder()->SetSheets(sheets);
    EXPECT_THROW(builder->Commit(), NXOpen::NXException);
    builder->SourceBuilder()->SetSelectedSheets(2);
    builder->Commit();
    EXPECT_EQ(devkit::liveObjects().builders, 1);
    gate.addFault({"NXOpen::Builder::Destroy", 1, 1, "Busy."});
    EXPECT_THROW(builder->Destroy(), NXOpen::NXException);
    EXPECT_EQ(devkit::liveObjects().builders, 0);

    const std::string pdf = test_support::readFile(file);
    EXPECT_EQ(pdf.rfind("%PDF-1.4\n", 0), 0U);
    EXPECT_THAT(pdf, HasSubstr("/Count 2"));
    EXPECT_THAT(pdf, HasSubstr("(Sheet \\(1\\)) Tj"));
    EXPECT_THAT(pdf, HasSubstr("(gr??e) Tj"));
    expectSoundPdf(pdf, 7);
    EXPECT_THAT(events,
                ElementsAre(R"-(pdf {"file":"zeichnung ü.pdf","part":"bolt","sheets":["Sheet (1)","größe"]})-"));
}

}  // namespace
