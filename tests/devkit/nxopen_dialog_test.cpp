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

const std::string list = block("UICOMP_enum", "list",
                               "<Property id='v' sname='Value' type='enum' selected='1'><Option name='Draft'/>"
                               "<Option name='Fine'/></Property>");
const std::string group =
    block("UGS::UICOMP_group", "group",
          "<Property id='Members' type='array'><PropertyList><Property class='UICOMP_button' id='go'>" +
              block("UICOMP_button", "go", "") + "</Property></PropertyList></Property>");
const std::string label =
    block("UICOMP_label", "label", property("Label", "utfstring", "Über") + property("Size", "integer", "1"));

class NxopenDialog : public devkit_test::HostTest {
 protected:
    std::unique_ptr<BlockDialog> create() {
        folder.writeFile("application/test.dlx", "<?xml version='1.0' encoding='UTF-8'?><Dialog>" + label + group +
                                                     list + "<PropertyList/></Dialog>");
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

    const std::unique_ptr<PropertyList> choices(dialog->GetBlockProperties("list"));
    EXPECT_STREQ(choices->GetEnumAsString("Value").GetUTF8Text(), "Fine");
    EXPECT_THROW(choices->GetString("Value"), NXException);
    EXPECT_THROW(choices->SetEnum("Value", 2), NXException);
    EXPECT_THROW(choices->SetEnum("Value", -1), NXException);
    dynamic_cast<Enumeration&>(*top->FindBlock("list")).SetEnumMembers({});
    EXPECT_STREQ(choices->GetEnumAsString("Value").GetUTF8Text(), "");
}

TEST_F(NxopenDialog, stopsWhatHandlersThrow) {
    const test_support::ScriptedHost host;
    const auto dialog = create();
    dialog->AddDialogShownHandler([] { throw std::runtime_error("escaped"); });
    dialog->Show();
    EXPECT_THAT(interceptor.violations(), testing::ElementsAre(HasSubstr("dialog shown handler of test.dlx: escaped")));
}

}  // namespace
