// Clones that go well, that write nothing or that name files otherwise are in tests/replays/managed-*.json and
// clone-*.json.
#include "export_fixture.h"

#include "export/managed_clone_export.h"

namespace {

using namespace export_test;

class ManagedCloneExport : public ExportTest {
 protected:
    std::string exportPart(const devkit::PartData& part) {
        return pivra::exportManagedPart(display(part), ExportRun(IdentifierForm::upload, part.uniqueIdentifier));
    }
};

TEST_F(ManagedCloneExport, callsTheCloneInterfaceInItsOrder) {
    exportPart(addManaged("4711"));
    std::vector<std::string> made;
    for (const auto& call : interceptor.calls()) {
        if (call.starts_with("UF_") && !call.starts_with("UF_free")) made.emplace_back(call);
    }
    EXPECT_THAT(made, ElementsAre("UF_initialize", "UF_PART_ask_part_name", "UF_UGMGR_decode_part_file_name",
                                  "UF_CLONE_initialise", "UF_CLONE_init_naming_failures", "UF_CLONE_set_def_action",
                                  "UF_CLONE_set_def_directory", "UF_CLONE_set_assoc_file_root_dir",
                                  "UF_CLONE_set_family_treatment", "UF_CLONE_set_def_naming", "UF_CLONE_set_name_rule",
                                  "UF_CLONE_init_naming_failures", "UF_CLONE_set_dryrun", "UF_CLONE_add_part",
                                  "UF_CLONE_apply_defaults", "UF_CLONE_init_naming_failures", "UF_CLONE_perform_clone",
                                  "UF_CLONE_terminate", "UF_terminate"));
}

TEST_F(ManagedCloneExport, folderWhoseNameTheCodePageLacksIsGivenInItsShortForm) {
    const fs::path temp = folder.path() / u8"temp 日本";
    fs::create_directory(temp);
    for (const char* name : {"TMP", "TMPDIR"}) test_support::setEnvironment(name, temp);
    const auto& item = addManaged("4711", "bytes");
    const std::string file = exportPart(item);
    EXPECT_EQ(file, utf8FromPath(temp / exportFolder(item).filename() / "4711.prt"));
    EXPECT_EQ(readFile(platform::pathFromUtf8(file)), "bytes");
}

TEST_F(ManagedCloneExport, leftoverOfAnEarlierCloneIsNoResult) {
    const auto& item = addManaged("4711");
    const std::string first = exportPart(item);
    EXPECT_EQ(exportPart(item), first);  // written anew with the same bytes
    session.clone.writesNothing = true;
    EXPECT_EQ(exportPart(item), "");
    EXPECT_TRUE(fs::exists(platform::pathFromUtf8(first)));
}

TEST_F(ManagedCloneExport, onlyPartFilesAndDrawingsAreResults) {
    session.clone.rootName = "unsupported.txt";
    session.clone.namingFailures = 1;
    EXPECT_EQ(exportPart(addManaged("4711")), "");
    EXPECT_THAT(heads(), testing::Contains("WARNING UF_CLONE_perform_clone reported 1 naming failure(s)."));
    session.clone.namingFailures = 0;
    addManaged("AB-2");
    auto& frame = addManaged("AB-1");
    place(frame, {"AB-2"});
    session.clone.rootName = "ab-1.Prt";
    EXPECT_EQ(exportPart(frame), utf8FromPath(exportFolder(frame) / "ab-1.Prt")) << "among its members, in any case";
    EXPECT_EQ(calls("UF_PART_free_load_status"), 1u);
}

TEST_F(ManagedCloneExport, withoutAPartOrTheInterfaceThereIsNone) {
    const auto& item = addManaged("4711");
    EXPECT_EQ(pivra::exportManagedPart(nullptr, ExportRun(IdentifierForm::upload, "")), "");
    interceptor.addFault({"UF_initialize", 1, 5});
    EXPECT_EQ(exportPart(item), "");
    EXPECT_THAT(heads(), ElementsAre("WARNING Managed NX export skipped because there is no displayed part",
                                     "WARNING Managed NX export failed because UF_initialize returned status 5"));
    interceptor.addFault({"NXOpen::BasePart::ComponentAssembly", 1, 1, "gone"});
    EXPECT_THROW(exportPart(item), std::exception);
}

}  // namespace
