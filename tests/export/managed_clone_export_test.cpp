#include "export_fixture.h"

#include <export/managed_clone_export.h>

namespace {

using namespace export_test;
using pivra::ExportRun;
using pivra::IdentifierForm;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ManagedCloneExport : public ExportTest {
 protected:
    std::string exportPart(const devkit::PartData& part, IdentifierForm form = IdentifierForm::upload) {
        return pivra::exportManagedPart(display(part), ExportRun(form, part.uniqueIdentifier));
    }
    std::string noFile(const devkit::PartData& part) {
        return "WARNING Managed NX export did not produce a supported upload file: " + labelOf(part) +
               " mode=upload directory=\"" + utf8FromPath(exportFolder(part)) + "\".";
    }
};

TEST_F(ManagedCloneExport, callsTheCloneInterfaceInItsOrder) {
    const auto& item = addManaged("4711", "bytes");
    auto* part = display(item);
    const ExportRun run(IdentifierForm::display, item.uniqueIdentifier);
    gate.reset();
    const std::string file = pivra::exportManagedPart(part, run);
    EXPECT_EQ(file, utf8FromPath(exportFolder(item) / "4711.prt"));
    EXPECT_EQ(test_support::readFile(platform::pathFromUtf8(file)), "bytes");
    std::vector<std::string> made;
    for (const auto& call : gate.calls()) {
        if (call.rfind("UF_", 0) == 0 && call.rfind("UF_free", 0) != 0) made.push_back(call);
    }
    EXPECT_THAT(made, ElementsAre("UF_initialize", "UF_PART_ask_part_name", "UF_UGMGR_decode_part_file_name",
                                  "UF_CLONE_initialise", "UF_CLONE_init_naming_failures", "UF_CLONE_set_def_action",
                                  "UF_CLONE_set_def_directory", "UF_CLONE_set_assoc_file_root_dir",
                                  "UF_CLONE_set_family_treatment", "UF_CLONE_set_def_naming", "UF_CLONE_set_name_rule",
                                  "UF_CLONE_init_naming_failures", "UF_CLONE_set_dryrun", "UF_CLONE_add_part",
                                  "UF_CLONE_apply_defaults", "UF_CLONE_init_naming_failures", "UF_CLONE_perform_clone",
                                  "UF_CLONE_terminate", "UF_terminate"));
    const std::string directory = utf8FromPath(exportFolder(item));
    EXPECT_THAT(
        log(),
        ElementsAre("INFO Starting managed NX export: " + labelOf(item) + " mode=display traceable_id=\"" +
                        item.uniqueIdentifier + "\" directory=\"" + directory + "\".",
                    "DEBUG Decoded managed NX part name for export: part_number=\"4711\" revision=\"A\" "
                    "file_type=\"\" file_name=\"\".",
                    "DEBUG Adding managed NX part to UF_CLONE export: encoded_name=\"%UGMGR=V3.2 PN=4711 PRN=A\".",
                    "INFO Managed NX export complete: " + labelOf(item) + " mode=display exported_file=\"" + file +
                        "\" decoded_part_number=\"4711\"."));
}

TEST_F(ManagedCloneExport, assemblyBringsItsMembers) {
    addManaged("20");
    addNative("native");
    auto& frame = addManaged("10");
    place(frame, {"20", "native"});
    EXPECT_EQ(exportPart(frame), utf8FromPath(exportFolder(frame) / "10.prt"));
    EXPECT_TRUE(fs::exists(exportFolder(frame) / "20.prt"));
    EXPECT_EQ(calls("UF_CLONE_add_assembly"), 1u);
    EXPECT_EQ(calls("UF_PART_free_load_status"), 1u);
    EXPECT_THAT(logLinesOf("DEBUG Adding managed NX assembly to UF_CLONE export: encoded_name="), SizeIs(1));
}

TEST_F(ManagedCloneExport, folderWhoseNameTheCodePageLacksIsGivenInItsShortForm) {
    const fs::path temp = folder.path() / u8"temp 日本";
    fs::create_directory(temp);
    for (const char* name : {"TMP", "TMPDIR"}) test_support::setEnvironment(name, temp);
    const auto& item = addManaged("4711", "bytes");
    const std::string file = exportPart(item);
    EXPECT_EQ(file, utf8FromPath(temp / exportFolder(item).filename() / "4711.prt"));
    EXPECT_EQ(test_support::readFile(platform::pathFromUtf8(file)), "bytes");
}

TEST_F(ManagedCloneExport, cloneThatWritesNothingGivesNothing) {
    const auto& item = addManaged("4711");
    session.clone.writesNothing = true;
    EXPECT_EQ(exportPart(item), "");
    EXPECT_EQ(log().back(), noFile(item));
}

TEST_F(ManagedCloneExport, leftoverOfAnEarlierCloneIsNoResult) {
    const auto& item = addManaged("4711");
    const std::string first = exportPart(item);
    EXPECT_EQ(exportPart(item), first);  // written anew with the same bytes
    session.clone.writesNothing = true;
    EXPECT_EQ(exportPart(item), "");
    EXPECT_EQ(log().back(), noFile(item));
    EXPECT_TRUE(fs::exists(platform::pathFromUtf8(first)));
}

TEST_F(ManagedCloneExport, fileOfAnotherNameIsTakenWhenItIsAllThereIs) {
    const auto& item = addManaged("4711");
    session.clone.rootName = "otherwise.prt";
    const std::string file = utf8FromPath(exportFolder(item) / "otherwise.prt");
    EXPECT_EQ(exportPart(item), file);
    EXPECT_THAT(log(), testing::Contains("DEBUG Managed NX export did not find a file matching the part number; using "
                                         "newest exported file: " +
                                         labelOf(item) + " part_number=\"4711\" directory=\"" +
                                         utf8FromPath(exportFolder(item)) + "\" exported_file=\"" + file + "\"."));
    session.clone.rootName = "unsupported.txt";
    EXPECT_EQ(exportPart(item), "");
}

TEST_F(ManagedCloneExport, rootIsFoundInAnyLetterCaseAmongItsMembers) {
    addManaged("AB-2");
    auto& frame = addManaged("AB-1");
    place(frame, {"AB-2"});
    session.clone.rootName = "ab-1.Prt";
    EXPECT_EQ(exportPart(frame), utf8FromPath(exportFolder(frame) / "ab-1.Prt"));
}

TEST_F(ManagedCloneExport, namingFailuresAreCountedAndFiveAreShown) {
    session.clone.namingFailures = 7;
    EXPECT_NE(exportPart(addManaged("4711")), "");
    for (const std::string operation :
         {"UF_CLONE_set_name_rule", "UF_CLONE_apply_defaults", "UF_CLONE_perform_clone"}) {
        EXPECT_THAT(log(), testing::Contains("WARNING " + operation + " reported 7 naming failure(s)."));
        EXPECT_THAT(logLinesOf("DEBUG " + operation + " naming failure["), SizeIs(5));
        EXPECT_THAT(log(), testing::Contains("DEBUG " + operation +
                                             " naming failure[1]: input=\"@DB/input1/A\" "
                                             "output=\"\" status=1100003."));
        EXPECT_THAT(log(),
                    testing::Contains("DEBUG " + operation + " suppressed 2 additional naming failure detail(s)."));
    }
    UF_CLONE_naming_failures_t none{};
    const auto before = log().size();
    pivra::reportNamingFailures("UF_CLONE_perform_clone", none);
    EXPECT_EQ(log().size(), before);
}

TEST_F(ManagedCloneExport, statusesAreLoggedAndEndNothing) {
    const auto& item = addManaged("4711");
    for (const char* call : {"UF_CLONE_initialise", "UF_CLONE_set_family_treatment", "UF_CLONE_set_dryrun",
                             "UF_CLONE_perform_clone", "UF_CLONE_terminate", "UF_PART_ask_part_name"}) {
        gate.reset();
        gate.addFault({call, 1, 77});
        exportPart(item);
        EXPECT_EQ(calls("UF_CLONE_terminate"), 1u) << call;
        EXPECT_EQ(calls("UF_CLONE_perform_clone"), 1u) << call;
        EXPECT_THAT(log(), testing::Contains(std::string("WARNING ") + call + " failed with NX status 77."));
        EXPECT_EQ(gate.bracketDepth(), 0) << call;
    }
}

TEST_F(ManagedCloneExport, refusalsSayWhy) {
    const auto& item = addManaged("4711");
    EXPECT_EQ(pivra::exportManagedPart(nullptr, ExportRun(IdentifierForm::upload, "")), "");
    gate.addFault({"UF_initialize", 1, 5});
    EXPECT_EQ(exportPart(item), "");
    EXPECT_THAT(log(), ElementsAre("WARNING Managed NX export skipped because there is no displayed part: mode=upload.",
                                   "WARNING Managed NX export failed because UF_initialize returned status 5: " +
                                       labelOf(item) + " mode=upload."));
    gate.addFault({"NXOpen::BasePart::ComponentAssembly", 1, 1, "gone"});
    EXPECT_THROW(exportPart(item), std::exception);
    EXPECT_EQ(gate.bracketDepth(), 0);
}

}  // namespace
