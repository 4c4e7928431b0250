// Dialogs by their layouts: what a layout lacks fails as it would in the host.
#include <support/scripted_host.h>
#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_Enumeration.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/UI.hxx>

#include <memory>
#include <stdexcept>

#include "host_fixture.h"

namespace {

using namespace NXOpen::BlockStyler;
using NXOpen::NXException;
using testing::HasSubstr;

std::string property(const std::string& name, const std::string& type, const std::string& value) {
    return "<Property id='" + name + "' sname='" + name + "' type='" + type + "' value='" + value + "'/>";
}

std::string block(const std::string& type, const std::string& id, const std::string& properties) {
    return "<item class='" + type + "' id='" + id + "' name='" + id + "'><PropertyList>" +
           property("BlockID", "string", id) + properties + "</PropertyList></item>";
}

std::string list(const std::string& selected) {
    return block("UICOMP_enum", "list",
                 "<Property id='v' sname='Value' type='enum' selected='" + selected +
                     "'><Option name='Draft'/><Option name='Fine'/></Property>");
}

std::string groupWith(const std::string& wrapperId, const std::string& item) {
    return block("UGS::UICOMP_group", "group",
                 "<Property id='Members' type='array'><PropertyList><Property class='UICOMP_button' id='" + wrapperId +
                     "'>" + item + "</Property></PropertyList></Property>");
}

std::string dialog(const std::string& blocks) {
    return "<?xml version='1.0' encoding='UTF-8'?><Dialog>" + blocks + "<PropertyList/></Dialog>";
}

const std::string button = block("UICOMP_button", "go", "");
const std::string label =
    block("UICOMP_label", "label", property("Label", "utfstring", "Über") + property("Size", "integer", "1"));

class NxopenDialog : public devkit_test::HostTest {
 protected:
    std::unique_ptr<BlockDialog> create(const std::string& blocks = label + groupWith("go", button) + list("1")) {
        folder.writeFile("application/test.dlx", dialog(blocks));
        session.applicationFolders = {folder.path() / "none", folder.path() / "application"};
        return std::unique_ptr<BlockDialog>(NXOpen::UI::GetUI()->CreateDialog("test.dlx"));
    }
};

TEST_F(NxopenDialog, checksIdsOfBlocksAndTypesOfProperties) {
    const auto dialog = create();
    auto* top = dialog->TopBlock();
    EXPECT_NE(dynamic_cast<Button*>(top->FindBlock("go")), nullptr);
    EXPECT_EQ(dynamic_cast<Button*>(top->FindBlock("label")), nullptr);
    EXPECT_EQ(top->FindBlock("none"), nullptr);
    EXPECT_THROW(dialog->GetBlockProperties("none"), NXException);

    const std::unique_ptr<PropertyList> texts(dialog->GetBlockProperties("label"));
    EXPECT_STREQ(texts->GetString("Label").GetUTF8Text(), "Über");
    EXPECT_THROW(texts->GetString("Labels"), NXException);
    EXPECT_THROW(texts->GetString("Show"), NXException);
    EXPECT_THROW(texts->SetLogical("Label", true), NXException);
    EXPECT_THROW(texts->SetString("Value", "x"), NXException);
    EXPECT_THROW(texts->GetEnum("Size"), NXException);

    const std::unique_ptr<PropertyList> list(dialog->GetBlockProperties("list"));
    EXPECT_STREQ(list->GetEnumAsString("Value").GetUTF8Text(), "Fine");
    EXPECT_THROW(list->GetString("Value"), NXException);
    EXPECT_THROW(list->SetEnum("Value", 2), NXException);
    EXPECT_THROW(list->SetEnum("Value", -1), NXException);
    dynamic_cast<Enumeration&>(*top->FindBlock("list")).SetEnumMembers({});
    EXPECT_STREQ(list->GetEnumAsString("Value").GetUTF8Text(), "");
}

TEST_F(NxopenDialog, refusesBrokenLayouts) {
    const std::vector<std::pair<std::string, const char*>> cases{
        {"</Dialog>", "test.dlx"},
        {button + button, "two blocks are named \"go\""},
        {"<item class='c' id='a' name='b'><PropertyList/></item>", "block \"a\": id, name and BlockID differ"},
        {"<item id='a' name='a'/>", "\"class\" is missing"},
        {block("c", "a", property("Show", "logical", "yes")), "property \"Show\": \"yes\" is neither"},
        {block("c", "a", property("Size", "number", "1")), "type \"number\" is unknown"},
        {block("c", "a", property("Size", "integer", "1x")), "\"1x\" is no number"},
        {list("2"), "selected option"},
        {groupWith("stop", button), "block \"go\": its wrapper differs"},
    };
    for (const auto& [blocks, message] : cases) {
        const auto creating = [this, text = blocks] { create(text); };
        EXPECT_THAT(creating, testing::ThrowsMessage<NXException>(HasSubstr(message))) << message;
    }
    EXPECT_EQ(devkit::liveObjects(), 0);
}

TEST_F(NxopenDialog, stopsWhatHandlersThrow) {
    const test_support::ScriptedHost host;
    const auto dialog = create();
    dialog->AddDialogShownHandler([] { throw std::runtime_error("escaped"); });
    dialog->Show();
    EXPECT_THAT(interceptor.violations(), testing::ElementsAre(HasSubstr("dialog shown handler of test.dlx: escaped")));
}

}  // namespace
