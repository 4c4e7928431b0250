#include <platform/text_encoding.h>
#include <uf_clone.h>
#include <uf_help.h>
#include <uf_part.h>
#include <NXOpen/BasePart.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/NXObjectManager.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>
#include <NXOpen/UI.hxx>

#include <thread>

#include "host_fixture.h"

namespace {

using devkit_test::Bracket;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class NxopenGate : public devkit_test::HostTest {};

TEST_F(NxopenGate, callsOfTheCInterfaceNeedTheBracket) {
    int module = 7;
    EXPECT_NE(UF_ask_application_module(&module), 0);
    EXPECT_EQ(module, 7);
    EXPECT_THAT(gate.violations(), ElementsAre(HasSubstr("UF_ask_application_module")));

    UF_initialize();
    UF_initialize();
    UF_terminate();
    EXPECT_EQ(UF_ask_application_module(&module), 0);
    EXPECT_EQ(gate.bracketDepth(), 1);
    UF_terminate();
    UF_free(nullptr);
    UF_free_string_array(0, nullptr);
    EXPECT_EQ(gate.violations().size(), 1U);

    UF_terminate();
    EXPECT_THAT(gate.violations(), ElementsAre(HasSubstr("UF_ask"), HasSubstr("without UF_initialize")));
    EXPECT_EQ(gate.bracketDepth(), 0);
}

TEST_F(NxopenGate, callsOnAnotherThreadFailAndAreKept) {
    const Bracket bracket;
    std::thread([] {
        int module = 0;
        EXPECT_NE(UF_ask_application_module(&module), 0);
        EXPECT_NE(UF_terminate(), 0);
        EXPECT_THROW(NXOpen::Session::GetSession(), NXOpen::NXException);
    }).join();
    EXPECT_THAT(gate.violations(), ElementsAre(HasSubstr("UF_ask_application_module"), HasSubstr("UF_terminate"),
                                               HasSubstr("NXOpen::Session::GetSession")));
    EXPECT_EQ(gate.bracketDepth(), 1);
}

TEST_F(NxopenGate, recordsCallsInOrder) {
    { const Bracket bracket; }
    NXOpen::Session::GetSession()->Parts()->BaseDisplay();
    EXPECT_THAT(gate.calls(), ElementsAre("UF_initialize", "UF_terminate", "NXOpen::Session::GetSession",
                                          "NXOpen::Session::Parts", "NXOpen::PartCollection::BaseDisplay"));
    EXPECT_EQ(gate.counts().at("UF_initialize"), 1U);
}

TEST_F(NxopenGate, failsTheNumberedCallByStatusExceptionOrNull) {
    gate.addFault({"UF_initialize", 2, 17});
    gate.addFault({"NXOpen::Session::GetSession", 1, 1, "No licence."});
    gate.addFault({"NXOpen::Session::GetSession", 2, 1, "", true});
    gate.addFault({"NXOpen::NXMessageBox::Show", 0, 1, "No box.", true});
    EXPECT_EQ(UF_initialize(), 0);
    EXPECT_EQ(UF_initialize(), 17);
    EXPECT_EQ(gate.bracketDepth(), 1);

    EXPECT_THAT([] { NXOpen::Session::GetSession(); }, testing::ThrowsMessage<std::exception>("No licence."));
    EXPECT_EQ(NXOpen::Session::GetSession(), nullptr);
    EXPECT_NE(NXOpen::Session::GetSession(), nullptr);

    auto* box = NXOpen::UI::GetUI()->NXMessageBox();
    for (int i = 0; i < 2; ++i) {
        EXPECT_THAT([&] { box->Show("", NXOpen::NXMessageBox::DialogTypeError, ""); },
                    testing::ThrowsMessage<NXOpen::NXException>("No box."));
    }
    EXPECT_THAT(gate.violations(), IsEmpty());
}

TEST_F(NxopenGate, failsTheNumberedCallOfAll) {
    gate.addFault({"", 3, 5});
    EXPECT_EQ(UF_initialize(), 0);
    char context[] = "help";
    EXPECT_EQ(UF_HELP_push_primary_context(context), 0);
    EXPECT_EQ(UF_HELP_pop_context(), 5);
    EXPECT_EQ(UF_terminate(), 0);
}

TEST_F(NxopenGate, whatEndsSomethingEndsItAlthoughItFails) {
    for (const char* call : {"UF_HELP_pop_context", "UF_CLONE_terminate", "UF_terminate"}) gate.addFault({call, 1, 9});
    char context[] = "help";
    UF_initialize();
    UF_HELP_push_primary_context(context);
    EXPECT_EQ(UF_HELP_pop_context(), 9);
    EXPECT_THAT(session.helpContexts, IsEmpty());
    EXPECT_NE(UF_HELP_pop_context(), 0);

    EXPECT_EQ(UF_CLONE_initialise(UF_CLONE_export_operation), 0);
    EXPECT_EQ(UF_CLONE_terminate(), 9);
    EXPECT_EQ(UF_CLONE_terminate(), UF_CLONE_err_not_active);
    EXPECT_EQ(UF_terminate(), 9);
    EXPECT_EQ(gate.bracketDepth(), 0);
    EXPECT_THAT(events, ElementsAre(HasSubstr("help-pushed"), HasSubstr("help-popped")));
}

TEST_F(NxopenGate, findsObjectsByTagWhileTheyLive) {
    addPart("bolt");
    const tag_t tag = session.object("bolt")->Tag();
    EXPECT_EQ(NXOpen::NXObjectManager::Get(tag), session.object("bolt"));
    EXPECT_EQ(NXOpen::NXObjectManager::Get(NULL_TAG), nullptr);
    session.reset();
    EXPECT_THROW(NXOpen::NXObjectManager::Get(tag), NXOpen::NXException);
    const Bracket bracket;
    char name[MAX_FSPEC_BUFSIZE];
    EXPECT_NE(UF_PART_ask_part_name(tag, name), 0);
}

TEST_F(NxopenGate, mapFileMustExist) {
    const Bracket bracket;
    std::string file = platform::fileSystemTextFromPath(folder.path() / "help.map");
    EXPECT_NE(UF_HELP_load_map_file(file.data()), 0);
    folder.writeFile("help.map", "");
    EXPECT_EQ(UF_HELP_load_map_file(file.data()), 0);
}

}  // namespace
