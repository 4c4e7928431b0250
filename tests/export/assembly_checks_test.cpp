#include "export_fixture.h"

#include <export/assembly_checks.h>
#include <export/component_walk.h>

namespace {

using namespace export_test;
using testing::ElementsAre;
using testing::IsEmpty;

class AssemblyChecks : public ExportTest {};

TEST_F(AssemblyChecks, unsavedComponentIsFoundAtAnyDepth) {
    auto& nut = addNative("nut");
    place(addNative("joint"), {"nut", "nut"});
    auto& frame = addNative("frame");
    place(frame, {"joint", "joint"});
    frame.modified = true;
    auto* root = object("frame");
    EXPECT_FALSE(pivra::hasUnsavedComponent(root));
    EXPECT_EQ(calls("UF_PART_is_modified"), 2u);
    EXPECT_TRUE(pivra::hasUnsavedChanges(root, true));

    nut.modified = true;
    EXPECT_TRUE(pivra::hasUnsavedComponent(root));
    EXPECT_THAT(log(), ElementsAre("WARNING Assembly child has unsaved changes: " + labelOf(nut) + "."));
    frame.modified = false;
    EXPECT_FALSE(pivra::hasUnsavedChanges(root, true));
    EXPECT_TRUE(pivra::hasUnsavedChanges(root, false));
    EXPECT_FALSE(pivra::hasUnsavedComponent(nullptr));
    EXPECT_FALSE(pivra::hasUnsavedComponent(object("nut")));
}

TEST_F(AssemblyChecks, checksStopAtTheFirstHit) {
    for (const char* name : {"a", "b", "c"}) addNative(name).modified = true;
    auto& frame = addNative("frame");
    place(frame, {"a", "b", "c"});
    EXPECT_TRUE(pivra::hasUnsavedComponent(object("frame")));
    EXPECT_EQ(calls("UF_PART_is_modified"), 1u);
    EXPECT_EQ(calls("NXOpen::Assemblies::Component::Prototype"), 1u);
}

TEST_F(AssemblyChecks, failureOfOneComponentDoesNotHideTheOthers) {
    addNative("a").modified = true;
    addNative("b").modified = true;
    auto& frame = addNative("frame");
    place(frame, {"a", "b"});
    gate.addFault({"UF_initialize", 1, 9});
    EXPECT_TRUE(pivra::hasUnsavedComponent(object("frame")));
    EXPECT_EQ(log().front(),
              "WARNING Assembly child modified-state check failed because UF_initialize returned "
              "status 9: " +
                  labelOf(*session.findPart("a")) + ".");
    gate.reset();
    gate.addFault({"NXOpen::Assemblies::Component::GetChildren", 2, 1, "gone"});
    EXPECT_FALSE(pivra::hasUnsupportedComponent(object("frame")));
    EXPECT_EQ(log().back(),
              "WARNING Assembly child check failed while walking components: " + labelOf(frame) + " error=\"gone\".");
}

TEST_F(AssemblyChecks, onlyPartFilesOnTheLocalDiskAreSupportedLoadedOrNot) {
    addNative("fine", "fine.PRT");
    addManaged("4711");
    const auto& foreign = addNative("foreign", "foreign.jt");
    const auto& lost = addNative("lost");
    fs::remove(platform::pathFromUtf8(lost.fullPath));
    addNative("unsaved", "");
    const std::pair<std::string, std::string> cases[] = {
        {"fine", ""},
        {"4711", ""},
        {"foreign", "Assembly child has unsupported backing file type: backing_source=\"" + foreign.fullPath +
                        "\" extension=\".jt\"."},
        {"lost", "Assembly child backing .prt is not saved locally: backing_source=\"" + lost.fullPath + "\"."},
        {"unsaved", "Assembly child has unsupported loaded part source: part=\"unsaved\" source=\"\" extension=\"\"."},
    };
    const auto isUnloaded = [](const std::string& name) { return name == "foreign" || name == "lost"; };
    std::vector<std::string> expectedLog;
    for (const auto& [name, line] : cases) {
        auto& frame = addNative("frame of " + name);
        place(frame, {"fine", ""});
        frame.components.push_back({"of nothing", "unknown", false});
        frame.components.push_back({name, name, !isUnloaded(name)});
        EXPECT_EQ(pivra::hasUnsupportedComponent(object(frame.name)), !line.empty()) << name;
        if (!line.empty()) expectedLog.push_back("WARNING " + line);
        EXPECT_EQ(log(), expectedLog);
    }
}

TEST_F(AssemblyChecks, depthIsNoMatterOfTheStack) {
    constexpr int levels = 10'000;
    for (int level = 0; level < levels; ++level) {
        devkit::PartData part;
        part.name = std::to_string(level);
        if (level + 1 < levels) place(part, {std::to_string(level + 1)});
        session.addPart(part);
    }
    session.findPart(std::to_string(levels - 1))->modified = true;
    gate.reset();
    EXPECT_TRUE(pivra::hasUnsavedComponent(object("0")));
    EXPECT_EQ(calls("UF_PART_is_modified"), static_cast<std::size_t>(levels - 1));
}

}  // namespace
