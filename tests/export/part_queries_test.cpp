#include "export_fixture.h"

#include "export/assembly_checks.h"
#include "export/part_queries.h"
#include "platform/text.h"

namespace {

using namespace export_test;

TEST(FileNames, areCutAsTexts) {
    const struct {
        const char *path, *name, *stem, *extension;
    } cases[] = {
        {R"(C:\m/x\bolt.v2.prt)", "bolt.v2.prt", "bolt.v2", ".prt"},
        {"/a.b/bolt", "bolt", "bolt", ""},
        {R"(C:\m\)", "", "", ""},
        {".prt", ".prt", ".prt", ""},
        {"", "", "", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(platform::lastPathComponent(c.path), c.name);
        EXPECT_EQ(platform::fileStem(c.path), c.stem);
        EXPECT_EQ(platform::fileExtension(c.path), c.extension);
    }
    EXPECT_EQ(platform::sanitizeFileName(R"("*/:<>?\|)"), "_________");
    EXPECT_EQ(platform::sanitizeFileName(""), "managed");
    EXPECT_EQ(platform::toLower("AZ[@\u00c9"), "az[@\u00c9");
}

class PartQueries : public ExportTest {};

TEST_F(PartQueries, answersAreHarmlessWithoutTheInterface) {
    auto& item = addManaged("4711");
    item.modified = true;
    item.familyInstance = true;
    auto* part = object("4711");
    for (const int module : {0, 1, 3}) {
        session.applicationModule = module;
        EXPECT_EQ(pivra::isDrawingContext(), module == 1);
    }
    session.applicationModule = 1;
    EXPECT_TRUE(pivra::isPartModified(part));
    interceptor.addFault({"UF_initialize", 0, 9});
    EXPECT_FALSE(pivra::isDrawingContext() || ExportRun(IdentifierForm::display).isDrawing());
    EXPECT_FALSE(pivra::isPartFamilyMember(part));
    EXPECT_FALSE(pivra::decodeManagedPartName(part).has_value());
    EXPECT_EQ(pivra::configuredRevisionId(pivra::decodeManagedPartName(part)), "1");
    EXPECT_FALSE(pivra::isPartModified(part));
    EXPECT_THAT(heads(), Contains("WARNING UF_initialize failed with NX status 9.").Times(5));
    EXPECT_EQ(heads().back(), "WARNING NX modified-state check failed because UF_initialize returned status 9");
}

TEST_F(PartQueries, runAsksOnceUnlessTheHostCouldNotAnswer) {
    addManaged("4711");
    auto& assembly = addNative("frame");
    place(assembly, {"4711", "4711"});
    assembly.components.push_back({"", "4711", false});
    auto* frame = object("frame");
    auto* managed = object("4711");
    ExportRun run(IdentifierForm::display);
    interceptor.reset();
    interceptor.addFault({"UF_PART_ask_part_name", 1, 9});
    EXPECT_FALSE(run.isManaged(managed));
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(run.isManaged(managed));
        EXPECT_FALSE(run.isManaged(frame));
        EXPECT_FALSE(pivra::hasUnsavedComponent(frame, run) || pivra::hasUnsupportedComponent(frame, run));
    }
    EXPECT_EQ(calls("UF_PART_ask_part_name"), 3u);
    EXPECT_EQ(calls("NXOpen::Assemblies::Component::GetChildren"), 3u);
    EXPECT_EQ(calls("UF_ASSEM_ask_component_data"), 1u);
}

TEST_F(PartQueries, eachPartIsAskedOnceUntilTheFirstHit) {
    auto& nut = addNative("nut");
    place(addNative("joint"), {"nut", "nut"});
    auto& frame = addNative("frame");
    place(frame, {"joint", "joint"});
    EXPECT_FALSE(hasUnsavedComponent(object("frame")));
    EXPECT_EQ(calls("UF_PART_is_modified"), 2u);
    EXPECT_EQ(calls("NXOpen::BasePart::ComponentAssembly"), 2u) << "of the frame and of the repeated nut alone";
    EXPECT_EQ(calls("NXOpen::Assemblies::Component::GetChildren"), 4u) << "of both joints, and of the first nut";
    interceptor.reset();
    interceptor.addFault({"NXOpen::BasePart::ComponentAssembly", 2, 1, "gone"});
    EXPECT_FALSE(hasUnsavedComponent(object("frame")));
    EXPECT_EQ(calls("NXOpen::Assemblies::Component::GetChildren"), 5u) << "the second nut may be an assembly";
    EXPECT_FALSE(hasUnsavedComponent(nullptr));
    EXPECT_FALSE(hasUnsavedComponent(object("nut")));

    for (const char* name : {"a", "b"}) addNative(name).modified = true;
    place(nut, {"a", "b"});
    EXPECT_TRUE(hasUnsavedComponent(object("nut")));
    EXPECT_EQ(calls("UF_PART_is_modified"), 3u);
    EXPECT_TRUE(hasUnsavedComponent(object("frame"))) << "at any depth";
    frame.modified = true;
    EXPECT_TRUE(hasUnsavedChanges(object("frame"), true)) << "a drawing's own";
}

TEST_F(PartQueries, failureOfOneComponentDoesNotHideTheOthers) {
    addNative("a").modified = true;
    addNative("b").modified = true;
    auto& frame = addNative("frame");
    place(frame, {"a", "b"});
    interceptor.addFault({"UF_initialize", 1, 9});
    EXPECT_TRUE(hasUnsavedComponent(object("frame")));
    interceptor.reset();
    interceptor.addFault({"NXOpen::BasePart::FullPath", 1, 1, "gone"});
    EXPECT_FALSE(hasUnsupportedComponent(object("frame")));
    interceptor.reset();
    interceptor.addFault({"NXOpen::Assemblies::Component::GetChildren", 2, 1, "gone"});
    EXPECT_FALSE(hasUnsupportedComponent(object("frame")));
    EXPECT_THAT(heads(),
                ElementsAre("WARNING Assembly child modified-state check failed because UF_initialize "
                            "returned status 9",
                            "WARNING Assembly child has unsaved changes", "WARNING Assembly child check failed",
                            "WARNING Assembly child check failed while walking components"));
}

TEST_F(PartQueries, depthIsNoMatterOfTheStack) {
    constexpr int levels = 10'000;
    for (int level = 0; level < levels; ++level) {
        devkit::PartData part;
        part.name = std::to_string(level);
        if (level + 1 < levels) place(part, {std::to_string(level + 1)});
        session.addPart(part);
    }
    session.findPart(std::to_string(levels - 1))->modified = true;
    interceptor.reset();
    EXPECT_TRUE(hasUnsavedComponent(object("0")));
    EXPECT_EQ(calls("UF_PART_is_modified"), static_cast<std::size_t>(levels - 1));
}

}  // namespace
