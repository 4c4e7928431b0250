#include "export_fixture.h"

#include <export/assembly_files.h>

namespace {

using namespace export_test;
using pivra::CollectedFiles;
using pivra::ExportRun;
using pivra::IdentifierForm;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class AssemblyFiles : public ExportTest {
 protected:
    CollectedFiles collectLocal(const devkit::PartData& root, IdentifierForm form = IdentifierForm::upload) {
        ExportRun run(form, root.uniqueIdentifier);
        return pivra::collectLocalUploadFiles(display(root), run);
    }
    CollectedFiles collectManaged(const devkit::PartData& root, const std::string& rootFile) {
        ExportRun run(IdentifierForm::upload, root.uniqueIdentifier);
        return pivra::collectManagedUploadFiles(display(root), rootFile, run);
    }
    static std::vector<std::string> namesOf(const CollectedFiles& files) {
        std::vector<std::string> names;
        for (const auto& entry : files.entries) names.push_back(entry.uploadFileName);
        return names;
    }
    std::string repeated(const devkit::PartData& part) const {
        return "DEBUG Assembly member skipped because it was already collected: " + labelOf(part) + " key=\"" +
               part.fullPath + "\".";
    }
};

TEST_F(AssemblyFiles, membersFollowTheRootInWalkOrderEachOnce) {
    addNative("nut");
    const auto& bolt = addNative("bolt");
    place(addNative("joint"), {"bolt", "nut"});
    auto& frame = addNative("frame");
    place(frame, {"bolt", "joint", "bolt"});
    const CollectedFiles files = collectLocal(frame);
    EXPECT_TRUE(files.isAssembly);
    EXPECT_THAT(namesOf(files), ElementsAre("frame.prt", "bolt.prt", "joint.prt", "nut.prt"));
    EXPECT_EQ(files.entries[1].uploadPath, utf8FromPath(exportFolder(frame) / "bolt.prt"));
    EXPECT_EQ(files.entries[1].sourceFileId, bolt.uniqueIdentifier);
    EXPECT_THAT(logLinesOf(repeated(bolt)), SizeIs(2));
    EXPECT_THAT(logLinesOf("DEBUG Copying local NX model"), SizeIs(4));
    EXPECT_EQ(log().back(), "INFO Collected local NX upload files: " + labelOf(frame) +
                                " is_assembly=true files=4 uploaded_files=4.");
}

TEST_F(AssemblyFiles, memberWithoutAFileCostsItselfAlone) {
    addNative("nut");
    const auto& lost = addNative("lost");
    fs::remove(platform::pathFromUtf8(lost.fullPath));
    auto& frame = addNative("frame");
    place(frame, {"lost", "lost", "nut"});
    EXPECT_THAT(namesOf(collectLocal(frame)), ElementsAre("frame.prt", "nut.prt"));
    EXPECT_THAT(logLinesOf("WARNING Assembly member"),
                ElementsAre("WARNING Assembly member export produced no local upload file: " + labelOf(lost) +
                                " source=\"" + lost.fullPath + "\".",
                            "WARNING Assembly member skipped because export produced no local file: " + labelOf(lost) +
                                " source_file_id=\"" + lost.uniqueIdentifier + "\"."));
    EXPECT_THAT(logLinesOf(repeated(lost)), SizeIs(1));
}

TEST_F(AssemblyFiles, memberWithoutIdentifierIsSkippedUnexported) {
    const auto& anonymous = addNative("anonymous");
    session.findPart("anonymous")->uniqueIdentifier = "";
    auto& frame = addNative("frame");
    place(frame, {"anonymous", "anonymous"});
    EXPECT_THAT(namesOf(collectLocal(frame)), ElementsAre("frame.prt"));
    EXPECT_THAT(logLinesOf("WARNING Assembly member skipped because upload identifiers could not be resolved: " +
                           labelOf(anonymous) + "."),
                SizeIs(2));
    EXPECT_THAT(logLinesOf("DEBUG Copying local NX model"), SizeIs(1));
}

TEST_F(AssemblyFiles, assemblyWithoutItsOwnFileSendsNothing) {
    addNative("nut");
    auto& frame = addNative("frame", "");
    place(frame, {"nut"});
    const CollectedFiles files = collectLocal(frame);
    EXPECT_TRUE(files.isAssembly);
    EXPECT_THAT(files.entries, IsEmpty());
    EXPECT_EQ(log().back(),
              "ERROR Local assembly export aborted because the root file was not exportable: part=\"frame\".");
}

TEST_F(AssemblyFiles, placesWithoutAPartAreWalkedPast) {
    addNative("nut");
    addNative("base").isPart = false;
    auto& frame = addNative("frame");
    place(frame, {"", "base"});
    frame.components.push_back({"unloaded", "elsewhere", false});
    place(frame, {"nut"});
    // A name that cannot be had is no reason to lose what follows.
    gate.addFault({"NXOpen::Assemblies::Component::DisplayName", 1, 1, "gone"});
    EXPECT_THAT(namesOf(collectLocal(frame)), ElementsAre("frame.prt", "nut.prt"));
    EXPECT_THAT(namesOf(collectLocal(addNative("single"))), ElementsAre("single.prt"));
    EXPECT_THAT(log().back(), testing::HasSubstr(" is_assembly=false files=1 uploaded_files=1."));
    ExportRun run(IdentifierForm::upload, "key");
    EXPECT_THAT(pivra::collectLocalUploadFiles(nullptr, run).entries, IsEmpty());
    EXPECT_EQ(log().back(), "WARNING Assembly export skipped a null NX part.");
}

TEST_F(AssemblyFiles, partInsideItselfEndsTheWalk) {
    auto& frame = addNative("frame");
    auto& joint = addNative("joint");
    place(frame, {"joint", "frame"});
    place(joint, {"joint", "frame"});
    EXPECT_THAT(namesOf(collectLocal(frame)), ElementsAre("frame.prt", "joint.prt"));
    EXPECT_THAT(logLinesOf(repeated(frame)), SizeIs(2));
    EXPECT_THAT(logLinesOf(repeated(joint)), SizeIs(1));
}

// Linear in the components, shown by the host's calls: a clock would show the machine.
TEST_F(AssemblyFiles, largeAssemblyExportsEachPartOnceAndRepeatsForFourCallsAtMost) {
    constexpr std::size_t parts = 2'000;
    folder.startLogging("pivra_nx_log_level = warning\n");
    auto& frame = addNative("frame");
    for (std::size_t part = 0; part < parts; ++part) addNative("part " + std::to_string(part));
    std::vector<std::size_t> calls;
    for (const std::size_t components : {10'000, 20'000}) {
        while (frame.components.size() < components) {
            place(frame, {"part " + std::to_string(frame.components.size() % parts)});
        }
        gate.reset();
        EXPECT_THAT(collectLocal(frame).entries, SizeIs(parts + 1));
        calls.push_back(gate.calls().size());
    }
    EXPECT_LE(calls[1] - calls[0], 4 * 10'000u);
    EXPECT_LE(calls[0], 4 * 8'000u + 40 * (parts + 1));  // whatever a part costs when it is met first, it costs once
}

TEST_F(AssemblyFiles, failuresOfAMemberAndOfTheWalkAreLoggedAndStayInside) {
    addNative("nut");
    const auto& bolt = addNative("bolt");
    auto& frame = addNative("frame");
    place(frame, {"bolt", "nut"});
    gate.addFault({"NXOpen::BasePart::UniqueIdentifier", 1, 1, "no identifier"});
    EXPECT_THAT(namesOf(collectLocal(frame)), ElementsAre("frame.prt", "nut.prt"));
    EXPECT_THAT(log(), testing::Contains("WARNING Failed to read NX internal ID while resolving traceable ID: " +
                                         labelOf(bolt) + "."));

    gate.reset();
    gate.addFault({"NXOpen::BasePart::FullPath", 5, 1, "no path"});  // after those for the root and for the label
    EXPECT_THAT(namesOf(collectLocal(frame)), ElementsAre("frame.prt", "nut.prt"));
    EXPECT_THAT(log(), testing::Contains("ERROR Assembly member metadata could not be read: " + labelOf(bolt) +
                                         " error=\"no path\"."));

    gate.reset();
    gate.addFault({"NXOpen::Assemblies::Component::Prototype", 2, 1, "gone"});
    EXPECT_THAT(namesOf(collectLocal(frame)), ElementsAre("frame.prt", "bolt.prt"));
    EXPECT_THAT(log(), testing::Contains("ERROR Local assembly export failed while walking components: " +
                                         labelOf(frame) + " error=\"gone\"."));
}

TEST_F(AssemblyFiles, copyThatFailsCostsItsMember) {
    addNative("nut");
    const auto& bolt = addNative("bolt");
    auto& frame = addNative("frame");
    place(frame, {"bolt", "nut"});
    folder.writeFile(exportFolder(frame) / "bolt.prt" / "in the way", "x");
    EXPECT_THAT(namesOf(collectLocal(frame)), ElementsAre("frame.prt", "nut.prt"));
    EXPECT_THAT(logLinesOf("ERROR Assembly member export failed: " + labelOf(bolt) + " error=\""), SizeIs(1));
}

TEST_F(AssemblyFiles, managedMembersLieBesideTheRoot) {
    const auto& lost = addManaged("30");
    const auto& bolt = addManaged("a/20");
    auto& frame = addManaged("10");
    place(frame, {"a/20", "30", "a/20"});
    const fs::path directory = exportFolder(frame);
    const std::string root = utf8FromPath(folder.writeFile(directory / "named otherwise.prt", "root"));
    const std::string member = utf8FromPath(folder.writeFile(directory / "below" / "A_20.PRT", "member"));
    const CollectedFiles files = collectManaged(frame, root);
    ASSERT_THAT(files.entries, SizeIs(2));
    EXPECT_EQ(files.entries[0].uploadPath, root);
    EXPECT_EQ(files.entries[1].uploadPath, member);
    EXPECT_EQ(files.entries[1].uploadFileName, "A_20.PRT");
    EXPECT_EQ(files.entries[1].sourcePath, bolt.fullPath);
    EXPECT_EQ(files.entries[1].revision, "B");
    const std::string shared = " shared_export_directory=\"" + utf8FromPath(directory) + "\".";
    EXPECT_THAT(
        log(),
        ElementsAre(
            "WARNING Managed assembly member omitted because no exported file was resolved: " + labelOf(lost) + shared,
            "WARNING Managed assembly member skipped because no local export file was found: " + labelOf(lost) +
                " source_file_id=\"" + lost.uniqueIdentifier + "\"" + shared,
            "DEBUG Managed assembly member skipped because it was already collected: " + labelOf(bolt) + " key=\"" +
                bolt.fullPath + "\".",
            "INFO Collected managed NX upload files: " + labelOf(frame) + " is_assembly=true files=2 uploaded_files=2" +
                shared));
}

TEST_F(AssemblyFiles, managedAssemblyWithoutItsOwnFileSendsNothing) {
    addManaged("20");
    auto& frame = addManaged("10");
    place(frame, {"20"});
    EXPECT_THAT(collectManaged(frame, "").entries, IsEmpty());
    EXPECT_EQ(log().back(), "ERROR Managed assembly file collection aborted because the root file was not resolved: " +
                                labelOf(frame) + " shared_export_directory=\"\".");
}

}  // namespace
