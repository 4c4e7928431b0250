// Which members go up, and what is said of the others, is in tests/replays/assembly*.json and managed-assembly.json.
#include "export_fixture.h"

#include "export/assembly_files.h"
#include "export/displayed_model_metadata.h"
#include "export/upload_preparation.h"

#include <fstream>
#include <iostream>

namespace {

using namespace export_test;
using pivra::CollectedFiles;

class AssemblyFiles : public ExportTest {
 protected:
    CollectedFiles collect(const devkit::PartData& root) {
        ExportRun run(IdentifierForm::upload, root.uniqueIdentifier);
        if (!root.managed) return pivra::collectLocalUploadFiles(display(root), run);
        return pivra::collectManagedUploadFiles(display(root), utf8FromPath(exportFolder(root) / "root.prt"), run);
    }
    static std::vector<std::string> namesOf(const CollectedFiles& files) {
        std::vector<std::string> names;
        for (const auto& entry : files.entries) names.push_back(entry.uploadFileName);
        return names;
    }
};

// The most memory that this process has had, as far as the system tells. Sanitizers keep what is freed.
long peakKilobytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word && word != "VmHWM:";) continue;
    long size = 0;
    status >> size;
    return size;
}

// Linear in the components, shown by the host's calls: a clock would show the machine, and memory the stand-in.
TEST_F(AssemblyFiles, largeAssemblyExportsEachPartOnceAndRepeatsForTwoCalls) {
    constexpr std::size_t parts = 1'000;
    folder.startLogging("pivra_nx_log_level = warning\n");
    auto& frame = addNative("frame");
    for (std::size_t part = 0; part < parts; ++part) addNative("part " + std::to_string(part));
    std::vector<std::size_t> calls;
    const std::size_t step = test_support::underLoad(5'000, 50'000);
    for (const std::size_t components : {step, 2 * step}) {
        while (frame.components.size() < components) {
            place(frame, {"part " + std::to_string(frame.components.size() % parts)});
        }
        interceptor.reset();
        display(frame);
        const auto metadata = pivra::readDisplayedModelMetadata();
        pivra::prepareUploadFiles(metadata);
        EXPECT_THAT(metadata->files, SizeIs(parts + 1));
        calls.push_back(interceptor.calls().size());
        std::cout << "load: " << components << " components: peak memory " << peakKilobytes() << " KB, "
                  << peakKilobytes() * 1024 / static_cast<long>(components) << " bytes each\n";
    }
    EXPECT_EQ(calls[1] - calls[0], 2 * step);          // one for display, one for preparation
    EXPECT_LE(calls[0], 2 * step + 40 * (parts + 1));  // whatever a part costs when it is met first, it costs once
}

TEST_F(AssemblyFiles, memoryDoesNotGrowWithTheFile) {
    const std::uintmax_t size = std::uintmax_t{test_support::underLoad(64, 5 * 1024)} << 20;
    const auto file = platform::pathFromUtf8(addNative("huge").fullPath);
    ASSERT_GT(fs::space(file).available, 2 * size) << "the copy takes the room that the sparse file does not";
    fs::resize_file(file, size);
    session.setDisplayed("huge");
    const auto metadata = pivra::readDisplayedModelMetadata();
    const auto before = peakKilobytes();
    pivra::prepareUploadFiles(metadata);
    EXPECT_EQ(fs::file_size(platform::pathFromUtf8(metadata->exportedFile)), size);
    const auto growth = peakKilobytes() - before;
    std::cout << "load: a part of " << (size >> 20) << " MiB prepared: peak memory grows by " << growth << " KB\n";
    EXPECT_LT(growth, 16'384);
}

TEST_F(AssemblyFiles, aFailureCostsItsMemberOrTheRestOfTheWalk) {
    addNative("nut");
    addNative("bolt");
    auto& native = addNative("frame");
    place(native, {"bolt", "nut"});
    addManaged("20");
    addManaged("30");
    auto& managed = addManaged("10");
    place(managed, {"20", "30"});
    const char* path = "NXOpen::BasePart::FullPath";
    const char* prototype = "NXOpen::Assemblies::Component::Prototype";
    const struct {
        const devkit::PartData& root;
        std::vector<devkit::Fault> faults;
        const char *member, *head;
    } cases[] = {
        // Asked once for the label of the log, and once more since that failed.
        {native, {{path, 2}, {path, 3}}, "nut.prt", "ERROR Assembly member metadata could not be read"},
        {native, {{prototype, 2}}, "bolt.prt", "ERROR Local assembly export failed while walking components"},
        {managed, {{path, 2}, {path, 3}}, "30.prt", "ERROR Managed assembly member file collection failed"},
        {managed, {{prototype, 2}}, "20.prt", "ERROR Managed assembly file collection failed while walking components"},
        {managed,
         {{"NXOpen::BasePart::UniqueIdentifier", 1}},
         "30.prt",
         "WARNING Managed assembly member skipped because upload identifiers could not be resolved"},
    };
    for (const auto& c : cases) {
        if (c.root.managed) {
            for (const char* name : {"20.prt", "30.prt"}) folder.writeFile(exportFolder(managed) / name, "x");
        }
        interceptor.reset();
        for (const auto& fault : c.faults) interceptor.addFault(fault);
        EXPECT_THAT(namesOf(collect(c.root)), ElementsAre(testing::_, c.member)) << c.head;
        EXPECT_THAT(heads(), Contains(c.head));
    }
}

TEST_F(AssemblyFiles, copyOrNameThatCannotBeHadIsNoReasonToLoseWhatFollows) {
    addNative("nut");
    addNative("bolt");
    auto& frame = addNative("frame");
    place(frame, {"bolt"});
    frame.components.push_back({"unloaded", "elsewhere", false});
    place(frame, {"nut"});
    folder.writeFile(exportFolder(frame) / "bolt.prt" / "in the way", "x");
    interceptor.addFault({"NXOpen::Assemblies::Component::DisplayName", 1, 1, "gone"});
    EXPECT_THAT(namesOf(collect(frame)), ElementsAre("frame.prt", "nut.prt"));
    EXPECT_THAT(heads(), Contains("ERROR Assembly member export failed"));
    ExportRun run(IdentifierForm::upload, "key");
    EXPECT_THAT(pivra::collectLocalUploadFiles(nullptr, run).entries, IsEmpty());
    EXPECT_EQ(heads().back(), "WARNING Assembly export skipped a null NX part.");
}

TEST_F(AssemblyFiles, filesWhoseNamesTheFileSystemMightTakeForOneAreKeptApart) {
    addNative("one", "one/Öse.prt", "1");
    addNative("two", "two/öse.prt", "2");
    auto& frame = addNative("frame");
    place(frame, {"one", "two"});
    const auto collected = collect(frame);
    ASSERT_THAT(collected.entries, SizeIs(3));
    const auto first = platform::pathFromUtf8(collected.entries[1].uploadPath);
    EXPECT_NE(first.parent_path(), platform::pathFromUtf8(collected.entries[2].uploadPath).parent_path());
    EXPECT_EQ(readFile(first), "1");
}

TEST_F(AssemblyFiles, managedMemberIsFoundBelowItsFolderInAnyLetterCase) {
    auto& frame = addManaged("10");
    addManaged("a/20");
    place(frame, {"a/20"});
    folder.writeFile(exportFolder(frame) / "below" / "A_20.PRT", "member");
    EXPECT_THAT(namesOf(collect(frame)), ElementsAre("root.prt", "A_20.PRT"));
}

}  // namespace
