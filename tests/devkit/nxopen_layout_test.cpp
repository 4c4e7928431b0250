#include <devkit/presenter.h>
#include <platform/text_encoding.h>
#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_Enumeration.hxx>
#include <NXOpen/BlockStyler_Group.hxx>
#include <NXOpen/BlockStyler_Label.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/UI.hxx>

#include <memory>
#include <stdexcept>

#include "host_fixture.h"

namespace {

using namespace NXOpen::BlockStyler;
using NXOpen::NXException;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

std::string property(const std::string& name, const std::string& type, const std::string& value) {
    return "<Property id='" + name + "' name='" + name + "' sname='" + name + "' type='" + type + "' value='" + value +
           "'/>";
}

std::string block(const std::string& type, const std::string& id, const std::string& properties) {
    return "<item class='" + type + "' id='" + id + "' name='" + id + "'><PropertyList>" +
           property("BlockID", "string", id) + properties + "</PropertyList></item>";
}

std::string group(const std::string& id, const std::string& content) {
    return block("UGS::UICOMP_group", id,
                 "<Property id='Members' type='array'><PropertyList>" + content + "</PropertyList></Property>");
}

std::string wrapped(const std::string& type, const std::string& id, const std::string& item) {
    return "<Property type='uicomp' class='" + type + "' id='" + id + "' name='" + id + "'>" + item + "</Property>";
}

std::string dialog(const std::string& blocks) {
    return "<?xml version='1.0' encoding='UTF-8'?><!-- > --><Dialog title='x.dlx'>" + blocks + "<PropertyList>" +
           property("Label", "utfstring", "Größe &gt; 1") + "</PropertyList></Dialog>";
}

const std::string listOptions = "<Option name='Draft' value='0'/><Option name='Fine' value='1'/>";
const std::string chosenList =
    "<Property id='Titles_1' sname='Value' type='enum' selected='1'>" + listOptions + "</Property>";

const std::string wholeLayout = dialog(
    block("UICOMP_label", "lonely", property("Label", "utfstring", "Über") + property("Show", "logical", "False")) +
    group("outer", wrapped("UICOMP_button", "go", block("UICOMP_button", "go", "")) +
                       group("inner", block("UICOMP_enum", "list", chosenList))) +
    block("UICOMP_separator", "line", ""));

class NxopenLayout : public devkit_test::HostTest {
 protected:
    std::unique_ptr<BlockDialog> create(const std::string& text = wholeLayout) {
        folder.writeFile("application/test.dlx", text);
        session.applicationFolders = {folder.path() / "none", folder.path() / "application"};
        return std::unique_ptr<BlockDialog>(NXOpen::UI::GetUI()->CreateDialog("test.dlx"));
    }
};

TEST_F(NxopenLayout, findsBlocksAtAnyDepthByTheirClass) {
    const auto dialog = create();
    auto* top = dialog->TopBlock();
    EXPECT_NE(dynamic_cast<Label*>(top->FindBlock("lonely")), nullptr);
    EXPECT_NE(dynamic_cast<Group*>(top->FindBlock("inner")), nullptr);
    EXPECT_NE(dynamic_cast<Button*>(top->FindBlock("go")), nullptr);
    EXPECT_NE(dynamic_cast<Enumeration*>(top->FindBlock("list")), nullptr);
    EXPECT_EQ(dynamic_cast<Button*>(top->FindBlock("line")), nullptr);
    EXPECT_EQ(top->FindBlock("none"), nullptr);
    EXPECT_THROW(dialog->GetBlockProperties("none"), NXException);
}

TEST_F(NxopenLayout, checksNamesAndTypesOfProperties) {
    const auto dialog = create();
    const std::unique_ptr<PropertyList> label(dialog->GetBlockProperties("lonely"));
    EXPECT_STREQ(label->GetString("Label").GetUTF8Text(), "Über");
    EXPECT_FALSE(label->GetLogical("Show"));
    label->SetString("BalloonTooltipText", "tip");
    EXPECT_STREQ(label->GetString("BalloonTooltipText").GetUTF8Text(), "tip");
    EXPECT_THROW(label->GetString("Labels"), NXException);
    EXPECT_THROW(label->GetString("Show"), NXException);
    EXPECT_THROW(label->SetLogical("Label", true), NXException);
    EXPECT_THROW(label->SetString("Value", "x"), NXException);
    EXPECT_THROW(label->SetEnumMembers("Value", {}), NXException);
    EXPECT_EQ(devkit::liveObjects().propertyLists, 1);
}

TEST_F(NxopenLayout, enumerationChoosesFromItsMembers) {
    const auto dialog = create();
    const std::unique_ptr<PropertyList> list(dialog->GetBlockProperties("list"));
    EXPECT_EQ(list->GetEnum("Value"), 1);
    EXPECT_STREQ(list->GetEnumAsString("Value").GetUTF8Text(), "Fine");
    EXPECT_THROW(list->GetString("Value"), NXException);
    EXPECT_THROW(list->GetInteger("Value"), NXException);
    EXPECT_THROW(list->SetEnum("Value", 2), NXException);
    EXPECT_THROW(list->SetEnum("Value", -1), NXException);
    EXPECT_THROW(list->SetEnumAsString("Value", "Rough"), NXException);
    list->SetEnumAsString("Value", "Draft");
    EXPECT_EQ(list->GetEnum("Value"), 0);

    auto* block = dynamic_cast<Enumeration*>(dialog->TopBlock()->FindBlock("list"));
    std::vector<NXOpen::NXString> members{"a", "b", "c"};
    list->SetEnum("Value", 1);
    block->SetEnumMembers(members);
    EXPECT_EQ(block->GetEnumMembers().size(), 3U);
    EXPECT_STREQ(block->ValueAsString().GetUTF8Text(), "a");
    members.clear();
    block->SetEnumMembers(members);
    EXPECT_STREQ(block->ValueAsString().GetUTF8Text(), "");
}

TEST_F(NxopenLayout, refusesBrokenLayouts) {
    std::string deep;
    for (int i = 0; i < 100'000; ++i) deep += "<a b='/>'>";
    const std::string twice = block("UICOMP_label", "a", "") + block("UICOMP_label", "a", "");
    const std::string tooHigh =
        "<Property id='e' sname='Value' type='enum' selected='2'>" + listOptions + "</Property>";
    const std::vector<std::pair<std::string, const char*>> cases{
        {"", "test.dlx"},
        {"<Dialog", "test.dlx"},
        {"<", "test.dlx"},
        {"<Dialogue/>", "no Dialog"},
        {deep, "too deep"},
        {std::string(5 * 1024 * 1024, ' '), "too long"},
        {"<Dialog/>", "PropertyList is missing"},
        {dialog(twice), "two blocks are named \"a\""},
        {dialog("<item class='UICOMP_label' id='a' name='b'><PropertyList/></item>"),
         "block \"a\": id, name and BlockID"},
        {dialog("<item id='a' name='a'/>"), "\"class\" is missing"},
        {dialog(block("UICOMP_label", "a", property("Show", "logical", "yes"))),
         "property \"Show\": \"yes\" is neither"},
        {dialog(block("UICOMP_label", "a", property("Size", "number", "1"))), "type \"number\" is unknown"},
        {dialog(block("UICOMP_label", "a", property("Size", "integer", "1x"))), "\"1x\" is no number"},
        {dialog(block("UICOMP_enum", "a", tooHigh)), "selected option"},
        {dialog(group("g", wrapped("UICOMP_label", "b", block("UICOMP_label", "a", "")))), "wrapper differs"},
    };
    for (const auto& [text, message] : cases) {
        const auto creating = [this, layout = text] { create(layout); };
        EXPECT_THAT(creating, ThrowsMessage<NXException>(HasSubstr(message))) << message;
    }
    EXPECT_THAT([] { NXOpen::UI::GetUI()->CreateDialog("none.dlx"); },
                ThrowsMessage<NXException>(HasSubstr("none.dlx: the file cannot be read")));
    EXPECT_EQ(devkit::liveObjects().dialogs, 0);
}

TEST_F(NxopenLayout, takesAFullPath) {
    const auto file = folder.writeFile(u8"日本.dlx", wholeLayout);
    const NXOpen::NXString text(platform::utf8FromPath(file), NXOpen::NXString::UTF8);
    EXPECT_NE(std::unique_ptr<BlockDialog>(NXOpen::UI::GetUI()->CreateDialog(text)), nullptr);
    EXPECT_EQ(devkit::readLayout(file)->title, "Größe > 1");
}

/// A plug-in's dialog that notes what it is told, and throws when told to.
struct Handlers {
    void initialize() { calls.push_back("initialize"); }
    void shown() {
        calls.push_back("shown");
        if (throws) throw std::runtime_error("escaped");
    }
    int update(UIBlock* changed) {
        calls.push_back(changed->Name().GetUTF8Text());
        changed->SetLabel("pressed");
        return 0;
    }

    std::vector<std::string> calls;
    bool throws = false;
};

/// Presses "go" once and notes which blocks are said to have changed.
class PressingPresenter : public devkit::Presenter {
 public:
    PressingPresenter() { devkit::setPresenter(this); }
    ~PressingPresenter() override { devkit::setPresenter(nullptr); }

    void show(devkit::DialogData& dialog) override {
        dialog.onInitialize();
        dialog.onShown();
        dialog.onUpdate(*dialog.find("go"));
        dialog.onClose();
    }
    void changed(devkit::DialogData&, devkit::BlockData& block) override {
        changes.push_back(block.id + ": " + devkit::textProperty(block, "Label"));
    }
    int messageBox(const std::string&, devkit::BoxKind, const std::string&) override { return 1; }

    std::vector<std::string> changes;
};

TEST_F(NxopenLayout, showsThroughThePresenter) {
    PressingPresenter presenter;
    Handlers handlers;
    {
        const auto dialog = create();
        dialog->AddInitializeHandler(NXOpen::make_callback(&handlers, &Handlers::initialize));
        dialog->AddDialogShownHandler(NXOpen::make_callback(&handlers, &Handlers::shown));
        dialog->AddUpdateHandler(NXOpen::make_callback(&handlers, &Handlers::update));
        dialog->TopBlock()->FindBlock("go")->SetLabel("before");
        dialog->Show();
        EXPECT_THAT(handlers.calls, ElementsAre("initialize", "shown", "go"));
        EXPECT_THAT(presenter.changes, ElementsAre("go: pressed"));
        EXPECT_THAT(gate.violations(), testing::IsEmpty());

        handlers.throws = true;
        dialog->Show();
        EXPECT_THAT(gate.violations(), ElementsAre(HasSubstr("dialog shown handler of test.dlx: escaped")));
        EXPECT_EQ(devkit::liveObjects().dialogs, 1);
    }
    EXPECT_EQ(devkit::liveObjects().dialogs, 0);
}

}  // namespace
