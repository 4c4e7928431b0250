#include <platform/text_encoding.h>
#include <uf_fam.h>
#include <uf_part.h>
#include <NXOpen/Assemblies_Component.hxx>
#include <NXOpen/Assemblies_ComponentAssembly.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/PartSaveStatus.hxx>
#include <NXOpen/Session.hxx>

#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>

#include "host_fixture.h"

namespace {

using devkit::SaveOutcome;
using devkit_test::Bracket;
using NXOpen::NXObject;
using NXOpen::Assemblies::Component;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

class NxopenSession : public devkit_test::HostTest {
 protected:
    static NXOpen::BasePart* displayed() { return NXOpen::Session::GetSession()->Parts()->BaseDisplay(); }
    static Component* root() { return displayed()->ComponentAssembly()->RootComponent(); }
};

TEST_F(NxopenSession, readsPartsAndCreatesTheirFiles) {
    load(R"({"parts": [
        {"name": "bolt", "file": "modèles/bolt 日本.prt", "contents": "steel", "uniqueIdentifier": "id-1",
         "modified": true, "attributes": {"PIVRA_ID": "x"}, "sheets": ["A", "B"], "family": {"member": 2}},
        {"name": "far", "path": "C:\\models\\far.prt", "leaf": "Far", "family": "template"},
        {"name": "gone", "file": "gone.prt", "missing": true, "isPart": false},
        {"name": "item", "managed": {"number": "000123", "revision": "A"}, "size": 3}],
        "displayed": "bolt", "applicationModule": "drafting", "clone": {"namingFailures": 7}})");

    auto* bolt = displayed();
    ASSERT_NE(dynamic_cast<NXOpen::Part*>(bolt), nullptr);
    EXPECT_STREQ(bolt->Leaf().GetUTF8Text(), "bolt 日本");
    EXPECT_STREQ(bolt->UniqueIdentifier().GetUTF8Text(), "id-1");
    EXPECT_EQ(test_support::readFile(folder.path() / u8"modèles" / u8"bolt 日本.prt"), "steel");
    EXPECT_THAT(bolt->FullPath().GetUTF8Text(), HasSubstr("bolt 日本.prt"));
    EXPECT_EQ(session.applicationModule, 1);
    EXPECT_EQ(session.clone.namingFailures, 7);

    EXPECT_STREQ(session.object("far")->FullPath().GetUTF8Text(), "C:\\models\\far.prt");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "gone.prt"));
    EXPECT_EQ(dynamic_cast<NXOpen::Part*>(session.object("gone")), nullptr);
    EXPECT_STREQ(session.object("item")->FullPath().GetUTF8Text(), "@DB/000123/A");
    EXPECT_STREQ(session.object("item")->Leaf().GetUTF8Text(), "000123/A");
    EXPECT_EQ(session.findPart("item")->content, "xxx");
}

TEST_F(NxopenSession, refusesDescriptionsByMember) {
    const std::vector<std::pair<const char*, const char*>> cases{
        {R"([])", "session: expected an object"},
        {R"({"part": []})", "session.part: unknown member"},
        {R"({"parts": {}})", "session.parts: expected a list"},
        {R"({"parts": [{"name": ""}]})", "session.parts[0].name"},
        {R"({"parts": [{"name": "a"}, {"name": "a"}]})", "session.parts[1].name: two parts"},
        {R"({"parts": [{"name": "a", "modified": 1}]})", "session.parts[0].modified: expected true or false"},
        {R"({"parts": [{"name": "a", "atributes": {}}]})", "session.parts[0].atributes: unknown member"},
        {R"({"parts": [{"name": "a", "attributes": {"t": 1}}]})", "session.parts[0].attributes"},
        {R"({"parts": [{"name": "a", "sheets": [1]}]})", "session.parts[0].sheets: expected a list of texts"},
        {R"({"parts": [{"name": "a", "size": -1}]})", "session.parts[0].size"},
        {R"({"parts": [{"name": "a", "save": "maybe"}]})", "session.parts[0].save: unknown word \"maybe\""},
        {R"({"parts": [{"name": "a", "family": "uncle"}]})", "session.parts[0].family"},
        {R"({"parts": [{"name": "a", "family": {"member": "1"}}]})", "session.parts[0].family.member"},
        {R"({"parts": [{"name": "a", "managed": {"no": "1"}}]})", "session.parts[0].managed.no: unknown member"},
        {R"({"parts": [{"name": "a", "components": ["b"]}]})", "session.parts[0].components[0]: no part is named"},
        {R"({"parts": [{"name": "a", "components": [3]}]})", "session.parts[0].components[0]: expected an object"},
        {R"({"displayed": "a"})", "session.displayed: no part"},
        {R"({"applicationModule": "sketch"})", "session.applicationModule"},
        {R"({"applicationModule": 4294967297})", "session.applicationModule: expected a whole number"},
        {R"({"clone": {"rootName": true}})", "session.clone.rootName"},
        {R"({"faults": [{"call": "UF_initialize", "times": 1}]})", "session.faults[0].times: unknown member"},
    };
    for (const auto& [json, message] : cases) {
        session.reset();
        const auto loading = [this, text = json] { load(text); };
        EXPECT_THAT(loading, ThrowsMessage<std::runtime_error>(HasSubstr(message))) << json;
    }
}

TEST_F(NxopenSession, editsOnePart) {
    load(R"({"parts": [{"name": "bolt", "file": "bolt.prt", "contents": "1"}, {"name": "far", "path": "/far.prt"}]})");
    const auto file = folder.path() / "bolt.prt";
    edit(R"({"name": "bolt", "modified": true})");
    EXPECT_TRUE(session.findPart("bolt")->modified);
    EXPECT_EQ(test_support::readFile(file), "1");
    edit(R"({"name": "bolt", "contents": "2", "components": ["far", null]})");
    EXPECT_EQ(test_support::readFile(file), "2");
    edit(R"({"name": "bolt", "missing": true})");
    EXPECT_FALSE(std::filesystem::exists(file));

    EXPECT_THAT([&] { edit(R"({"name": "nut"})"); }, ThrowsMessage<std::runtime_error>(HasSubstr("edit.name")));
    EXPECT_THAT([&] { edit(R"({"name": "bolt", "modified": false, "leaf": 1})"); },
                ThrowsMessage<std::runtime_error>(HasSubstr("edit.leaf")));
    EXPECT_TRUE(session.findPart("bolt")->modified);
}

TEST_F(NxopenSession, leavesFilesAloneThatItDidNotCreate) {
    std::filesystem::create_directory(folder.path() / "own");
    const auto foreign = folder.writeFile("own2/foreign.prt", "mine");
    const nlohmann::json part{{"name", "bolt"}, {"path", platform::utf8FromPath(foreign)}, {"missing", true}};
    devkit::loadSession({{"parts", {part}}}, folder.path() / "own");
    EXPECT_EQ(test_support::readFile(foreign), "mine");
}

TEST_F(NxopenSession, componentsPlaceThePartsOwnComponents) {
    load(R"({"parts": [
        {"name": "top", "components": ["mid", null, {"part": "bolt", "loaded": false, "displayName": "Bolt 1"}, "mid"]},
        {"name": "mid", "components": ["bolt"]}, {"name": "bolt", "path": "/bolt.prt"}], "displayed": "top"})");
    EXPECT_EQ(session.object("bolt")->ComponentAssembly()->RootComponent(), nullptr);
    EXPECT_EQ(dynamic_cast<NXOpen::Part*>(root()->Prototype()), displayed());

    const auto children = root()->GetChildren();
    ASSERT_EQ(children.size(), 4U);
    EXPECT_EQ(children[1], nullptr);
    EXPECT_EQ(children[2]->Prototype(), nullptr);
    EXPECT_STREQ(children[2]->DisplayName().GetUTF8Text(), "Bolt 1");
    EXPECT_TRUE(children[2]->GetChildren().empty());
    EXPECT_EQ(children[0]->Prototype(), children[3]->Prototype());
    EXPECT_NE(children[0]->GetChildren().at(0), children[3]->GetChildren().at(0));
    EXPECT_STREQ(children[0]->GetChildren().at(0)->DisplayName().GetUTF8Text(), "bolt");
    EXPECT_EQ(root()->GetChildren(), children);

    edit(R"({"name": "top", "components": ["bolt"]})");
    ASSERT_EQ(root()->GetChildren().size(), 1U);
    EXPECT_THROW(children[3]->Prototype(), NXOpen::NXException);
}

TEST_F(NxopenSession, treesMayBeDeepOrWithoutEnd) {
    constexpr int levels = 10'000;
    for (int i = 0; i < levels; ++i) {
        addPart(std::to_string(i)).components = {{"", std::to_string((i + 1) % levels)}};
    }
    session.setDisplayed("0");
    Component* component = root();
    for (int i = 0; i < levels + 5; ++i) component = component->GetChildren().at(0);
    EXPECT_EQ(dynamic_cast<NXOpen::Part*>(component->Prototype()), session.object("5"));
}

TEST_F(NxopenSession, keepsTextAttributes) {
    load(R"({"parts": [{"name": "bolt", "path": "/bolt.prt"}], "displayed": "bolt"})");
    auto* part = displayed();
    const auto type = NXObject::AttributeTypeString;
    EXPECT_FALSE(part->HasUserAttribute("T", type, -1));
    EXPECT_THROW(part->GetUserAttributeAsString("T", type, -1), NXOpen::NXException);
    EXPECT_THROW(part->DeleteUserAttribute(type, "T", true, NXOpen::Update::OptionNow), NXOpen::NXException);

    part->SetUserAttribute("T", -1, NXOpen::NXString("ü", NXOpen::NXString::UTF8), NXOpen::Update::OptionNow);
    EXPECT_TRUE(part->HasUserAttribute("T", type, -1));
    EXPECT_FALSE(part->HasUserAttribute("T", NXObject::AttributeTypeInteger, -1));
    EXPECT_STREQ(part->GetUserAttributeAsString("T", type, -1).GetUTF8Text(), "ü");
    EXPECT_STREQ(part->GetStringUserAttribute("T", -1).GetUTF8Text(), "ü");
    EXPECT_TRUE(session.findPart("bolt")->modified);
    part->DeleteUserAttribute(type, "T", true, NXOpen::Update::OptionNow);
    EXPECT_FALSE(part->HasUserAttribute("T", type, -1));
    EXPECT_THAT(events, ElementsAre(R"(attribute-written {"part":"bolt","title":"T","value":"ü"})",
                                    R"(attribute-deleted {"part":"bolt","title":"T"})"));
}

TEST_F(NxopenSession, savesAsTold) {
    struct Case {
        SaveOutcome outcome;
        std::optional<std::pair<int, int>> unsaved;
        bool modifiedAfterwards;
    };
    for (const Case& test :
         {Case{SaveOutcome::saved, {{0, 0}}, false}, Case{SaveOutcome::unsavedParts, {{1, 0}}, true},
          Case{SaveOutcome::unsavedObjects, {{0, 1}}, true}, Case{SaveOutcome::nullStatus, std::nullopt, false}}) {
        session.reset();
        devkit::PartData& bolt = addPart("bolt");
        bolt.modified = true;
        bolt.save = test.outcome;
        session.setDisplayed("bolt");
        const std::unique_ptr<NXOpen::PartSaveStatus> status(
            displayed()->Save(NXOpen::BasePart::SaveComponentsFalse, NXOpen::BasePart::CloseAfterSaveFalse));
        ASSERT_EQ(status != nullptr, test.unsaved.has_value());
        if (status) {
            EXPECT_EQ(std::pair(status->NumberUnsavedParts(), status->NumberUnsavedObjects()), *test.unsaved);
        }
        EXPECT_EQ(bolt.modified, test.modifiedAfterwards);
    }
    EXPECT_EQ(devkit::liveObjects().saveStatuses, 0);
    session.findPart("bolt")->save = SaveOutcome::throws;
    EXPECT_THROW(displayed()->Save(NXOpen::BasePart::SaveComponentsFalse, NXOpen::BasePart::CloseAfterSaveFalse),
                 NXOpen::NXException);
}

TEST_F(NxopenSession, answersForPartFamilies) {
    load(R"({"parts": [{"name": "i", "family": "instance"}, {"name": "t", "family": "template"},
                       {"name": "m", "family": {"member": 4}}]})");
    const Bracket bracket;
    const auto tagOf = [&](const char* name) { return session.object(name)->Tag(); };
    logical yes{};
    EXPECT_EQ(UF_PART_is_family_instance(tagOf("i"), &yes), 0);
    EXPECT_TRUE(yes);
    EXPECT_EQ(UF_PART_is_family_template(tagOf("i"), &yes), 0);
    EXPECT_FALSE(yes);
    EXPECT_EQ(UF_PART_is_family_template(tagOf("t"), &yes), 0);
    EXPECT_TRUE(yes);

    tag_t instance = 1;
    EXPECT_EQ(UF_PART_ask_family_instance(tagOf("i"), &instance), 0);
    EXPECT_EQ(instance, NULL_TAG);
    EXPECT_EQ(UF_PART_ask_family_instance(tagOf("m"), &instance), 0);
    tag_t family = NULL_TAG;
    int member = -1;
    EXPECT_EQ(UF_FAM_ask_instance_data(instance, &family, &member), 0);
    EXPECT_NE(family, NULL_TAG);
    EXPECT_EQ(member, 4);
    EXPECT_NE(UF_FAM_ask_instance_data(tagOf("m"), &family, &member), 0);
}

}  // namespace
