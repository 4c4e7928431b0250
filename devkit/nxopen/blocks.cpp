#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_Enumeration.hxx>
#include <NXOpen/BlockStyler_Group.hxx>
#include <NXOpen/BlockStyler_Label.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>

#include "calls.h"
#include "dialog_state.h"
#include "host_text.h"

namespace NXOpen::BlockStyler {

PropertyList* UIBlock::GetProperties() {
    if (!devkit::enterForPointer("NXOpen::BlockStyler::UIBlock::GetProperties")) return nullptr;
    return new PropertyList(dialog_, data_);
}

NXString UIBlock::Name() {
    devkit::enter("NXOpen::BlockStyler::UIBlock::Name");
    return devkit::hostString(data_.id);
}

NXString UIBlock::Type() {
    devkit::enter("NXOpen::BlockStyler::UIBlock::Type");
    return devkit::hostString(data_.type);
}

NXString UIBlock::Label() {
    devkit::enter("NXOpen::BlockStyler::UIBlock::Label");
    return devkit::hostString(devkit::property<std::string>(data_, "Label"));
}

void UIBlock::SetLabel(const NXString& label) {
    devkit::enter("NXOpen::BlockStyler::UIBlock::SetLabel");
    dialog_.set(data_, "Label", std::string(label.GetUTF8Text()));
}

void UIBlock::SetLabel(const char* label) {
    SetLabel(NXString(label));
}

bool UIBlock::Enable() {
    devkit::enter("NXOpen::BlockStyler::UIBlock::Enable");
    return devkit::property<bool>(data_, "Enable");
}

void UIBlock::SetEnable(bool enable) {
    devkit::enter("NXOpen::BlockStyler::UIBlock::SetEnable");
    dialog_.set(data_, "Enable", enable);
}

bool UIBlock::Show() {
    devkit::enter("NXOpen::BlockStyler::UIBlock::Show");
    return devkit::property<bool>(data_, "Show");
}

void UIBlock::SetShow(bool show) {
    devkit::enter("NXOpen::BlockStyler::UIBlock::SetShow");
    dialog_.set(data_, "Show", show);
}

UIBlock* CompositeBlock::FindBlock(const NXString& blockName) {
    if (!devkit::enterForPointer("NXOpen::BlockStyler::CompositeBlock::FindBlock")) return nullptr;
    return dialog().find(blockName.GetUTF8Text());
}

UIBlock* CompositeBlock::FindBlock(const char* blockName) {
    return FindBlock(NXString(blockName));
}

NXString Label::Bitmap() {
    devkit::enter("NXOpen::BlockStyler::Label::Bitmap");
    return devkit::hostString(devkit::property<std::string>(data(), "Bitmap"));
}

void Label::SetBitmap(const NXString& bitmap) {
    devkit::enter("NXOpen::BlockStyler::Label::SetBitmap");
    dialog().set(data(), "Bitmap", std::string(bitmap.GetUTF8Text()));
}

void Label::SetBitmap(const char* bitmap) {
    SetBitmap(NXString(bitmap));
}

NXString Button::Bitmap() {
    devkit::enter("NXOpen::BlockStyler::Button::Bitmap");
    return devkit::hostString(devkit::property<std::string>(data(), "Bitmap"));
}

void Button::SetBitmap(const NXString& bitmap) {
    devkit::enter("NXOpen::BlockStyler::Button::SetBitmap");
    dialog().set(data(), "Bitmap", std::string(bitmap.GetUTF8Text()));
}

void Button::SetBitmap(const char* bitmap) {
    SetBitmap(NXString(bitmap));
}

std::vector<NXString> Enumeration::GetEnumMembers() {
    devkit::enter("NXOpen::BlockStyler::Enumeration::GetEnumMembers");
    return devkit::hostStrings(devkit::membersOf(data(), "Value"));
}

void Enumeration::SetEnumMembers(const std::vector<NXString>& members) {
    devkit::enter("NXOpen::BlockStyler::Enumeration::SetEnumMembers");
    dialog().setMembers(data(), "Value", devkit::utf8Texts(members));
}

NXString Enumeration::ValueAsString() {
    devkit::enter("NXOpen::BlockStyler::Enumeration::ValueAsString");
    return devkit::hostString(devkit::chosenMember(data(), "Value"));
}

void Enumeration::SetValueAsString(const NXString& value) {
    devkit::enter("NXOpen::BlockStyler::Enumeration::SetValueAsString");
    dialog().choose(data(), "Value", value.GetUTF8Text());
}

void Enumeration::SetValueAsString(const char* value) {
    SetValueAsString(NXString(value));
}

}  // namespace NXOpen::BlockStyler
