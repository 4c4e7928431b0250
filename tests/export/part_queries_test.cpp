#include "export_fixture.h"

#include <export/file_names.h>
#include <export/part_queries.h>
#include <support/directory_link.h>

namespace {

using namespace export_test;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(FileNames, areCutAsTexts) {
    struct {
        const char* path;
        const char* name;
        const char* stem;
        const char* extension;
    } cases[] = {
        {R"(C:\m/x\bolt.v2.prt)", "bolt.v2.prt", "bolt.v2", ".prt"},
        {"/a.b/bolt", "bolt", "bolt", ""},
        {"bolt.PRT", "bolt.PRT", "bolt", ".PRT"},
        {R"(C:\m\)", "", "", ""},
        {".prt", ".prt", ".prt", ""},
        {"", "", "", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(pivra::lastPathComponent(c.path), c.name);
        EXPECT_EQ(pivra::fileStem(c.path), c.stem);
        EXPECT_EQ(pivra::fileExtension(c.path), c.extension);
    }
    EXPECT_TRUE(pivra::hasExtension("a.Prt", ".prt"));
    EXPECT_EQ(pivra::sanitizeFileName(R"("*/:<>?\|)"), "_________");
    EXPECT_EQ(pivra::sanitizeFileName("Größe 1.2"), "Größe 1.2");
    EXPECT_EQ(pivra::sanitizeFileName(""), "managed");
}

class PartQueries : public ExportTest {};

TEST_F(PartQueries, displayedPartIsNullWhenAnythingIsMissing) {
    const auto& bolt = addNative("bolt");
    EXPECT_EQ(pivra::displayedPart(), nullptr);
    const auto* part = display(bolt);
    EXPECT_EQ(pivra::displayedPart(), part);
    gate.addFault({"NXOpen::Session::GetSession", 3, 1, "", true});
    EXPECT_EQ(pivra::displayedPart(), nullptr);
    gate.addFault({"NXOpen::Session::Parts", 3, 1, "", true});
    EXPECT_EQ(pivra::displayedPart(), nullptr);
}

TEST_F(PartQueries, modelFactsOfNativeAndManagedParts) {
    auto* native = object(addNative("bolt").name);
    auto& item = addManaged("4711");
    auto* managed = object("4711");
    EXPECT_FALSE(pivra::isManagedPart(native));
    EXPECT_EQ(pivra::configuredRevisionId(native), "1");
    const auto name = pivra::decodeManagedPartName(managed);
    ASSERT_TRUE(name.has_value());
    EXPECT_EQ(name->partNumber + "|" + name->partRevision + "|" + name->partFileType, "4711|A|");
    EXPECT_EQ(pivra::configuredRevisionId(managed), "B");
    item.managed->configuredRevision = "";
    EXPECT_EQ(pivra::configuredRevisionId(managed), "1");
    item.managed->number = "";
    EXPECT_FALSE(pivra::isManagedPart(managed));
    EXPECT_THAT(log(), IsEmpty());
}

TEST_F(PartQueries, familyMembershipHasThreeSigns) {
    auto& bolt = addNative("bolt");
    EXPECT_FALSE(pivra::isPartFamilyMember(object("bolt")));
    bolt.familyInstance = true;
    EXPECT_TRUE(pivra::isPartFamilyMember(object("bolt")));
    bolt.familyInstance = false;
    bolt.familyTemplate = true;
    EXPECT_TRUE(pivra::isPartFamilyMember(object("bolt")));
    bolt.familyTemplate = false;
    bolt.familyMember = -1;
    EXPECT_FALSE(pivra::isPartFamilyMember(object("bolt")));
    bolt.familyMember = 0;
    EXPECT_TRUE(pivra::isPartFamilyMember(object("bolt")));
    gate.addFault({"UF_FAM_ask_instance_data", 0, 7});
    EXPECT_FALSE(pivra::isPartFamilyMember(object("bolt")));
    EXPECT_THAT(log(), ElementsAre("WARNING UF_FAM_ask_instance_data failed with NX status 7."));
}

TEST_F(PartQueries, draftingIsModuleOne) {
    EXPECT_FALSE(pivra::isDrawingContext());
    session.applicationModule = 1;
    EXPECT_TRUE(pivra::isDrawingContext());
    session.applicationModule = 3;
    EXPECT_FALSE(pivra::isDrawingContext());
}

TEST_F(PartQueries, answersAreHarmlessWithoutTheInterface) {
    session.applicationModule = 1;
    auto& item = addManaged("4711");
    item.modified = true;
    item.familyInstance = true;
    auto* part = object("4711");
    EXPECT_TRUE(pivra::isPartModified(part));
    gate.addFault({"UF_initialize", 0, 9});
    EXPECT_FALSE(pivra::isDrawingContext());
    EXPECT_FALSE(pivra::isPartFamilyMember(part));
    EXPECT_FALSE(pivra::isManagedPart(part));
    EXPECT_EQ(pivra::configuredRevisionId(part), "1");
    EXPECT_FALSE(pivra::isPartModified(part));
    EXPECT_THAT(log(), testing::Contains("WARNING UF_initialize failed with NX status 9.").Times(4));
    EXPECT_EQ(log().back(),
              "WARNING NX modified-state check failed because UF_initialize returned status 9: " + labelOf(item) + ".");
}

TEST_F(PartQueries, usableSourceIsAnOrdinaryFile) {
    const fs::path file = folder.writeFile(fs::path("models") / u8"Größe 日本.prt", "x");
    EXPECT_TRUE(pivra::hasUsableLocalSource(utf8FromPath(file)));
    EXPECT_FALSE(pivra::hasUsableLocalSource(""));
    EXPECT_FALSE(pivra::hasUsableLocalSource(utf8FromPath(file) + "x"));
    EXPECT_FALSE(pivra::hasUsableLocalSource(utf8FromPath(file.parent_path())));
    EXPECT_FALSE(pivra::hasUsableLocalSource("@DB/4711/A"));
    const test_support::DirectoryLink link(folder.path() / "models" / "link", file.parent_path());
    EXPECT_FALSE(pivra::hasUsableLocalSource(utf8FromPath(folder.path() / "models" / "link")));
}

}  // namespace
