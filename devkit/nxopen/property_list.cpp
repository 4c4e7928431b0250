#include <devkit/live_objects.h>
#include <NXOpen/BlockStyler_PropertyList.hxx>

#include "calls.h"
#include "dialog_state.h"
#include "host_text.h"

namespace NXOpen::BlockStyler {

PropertyList::PropertyList(devkit::DialogState& dialog, devkit::BlockData& block) : dialog_(dialog), block_(block) {
    ++devkit::liveObjects().propertyLists;
}

PropertyList::~PropertyList() {
    --devkit::liveObjects().propertyLists;
}

NXString PropertyList::GetString(const NXString& name) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::GetString");
    return devkit::hostString(devkit::property<std::string>(block_, name.GetUTF8Text()));
}

NXString PropertyList::GetString(const char* name) {
    return GetString(NXString(name));
}

void PropertyList::SetString(const NXString& name, const NXString& value) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::SetString");
    dialog_.set(block_, name.GetUTF8Text(), std::string(value.GetUTF8Text()));
}

void PropertyList::SetString(const char* name, const char* value) {
    SetString(NXString(name), NXString(value));
}

bool PropertyList::GetLogical(const NXString& name) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::GetLogical");
    return devkit::property<bool>(block_, name.GetUTF8Text());
}

bool PropertyList::GetLogical(const char* name) {
    return GetLogical(NXString(name));
}

void PropertyList::SetLogical(const NXString& name, bool value) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::SetLogical");
    dialog_.set(block_, name.GetUTF8Text(), value);
}

void PropertyList::SetLogical(const char* name, bool value) {
    SetLogical(NXString(name), value);
}

int PropertyList::GetInteger(const NXString& name) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::GetInteger");
    return devkit::integer(block_, name.GetUTF8Text());
}

int PropertyList::GetInteger(const char* name) {
    return GetInteger(NXString(name));
}

void PropertyList::SetInteger(const NXString& name, int value) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::SetInteger");
    devkit::integer(block_, name.GetUTF8Text());
    dialog_.set(block_, name.GetUTF8Text(), value);
}

void PropertyList::SetInteger(const char* name, int value) {
    SetInteger(NXString(name), value);
}

int PropertyList::GetEnum(const NXString& name) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::GetEnum");
    return devkit::enumeration(block_, name.GetUTF8Text());
}

int PropertyList::GetEnum(const char* name) {
    return GetEnum(NXString(name));
}

void PropertyList::SetEnum(const NXString& name, int value) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::SetEnum");
    dialog_.choose(block_, name.GetUTF8Text(), value);
}

void PropertyList::SetEnum(const char* name, int value) {
    SetEnum(NXString(name), value);
}

NXString PropertyList::GetEnumAsString(const NXString& name) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::GetEnumAsString");
    return devkit::hostString(devkit::chosenMember(block_, name.GetUTF8Text()));
}

NXString PropertyList::GetEnumAsString(const char* name) {
    return GetEnumAsString(NXString(name));
}

void PropertyList::SetEnumAsString(const NXString& name, const NXString& value) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::SetEnumAsString");
    dialog_.choose(block_, name.GetUTF8Text(), value.GetUTF8Text());
}

void PropertyList::SetEnumAsString(const char* name, const char* value) {
    SetEnumAsString(NXString(name), NXString(value));
}

std::vector<NXString> PropertyList::GetEnumMembers(const NXString& name) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::GetEnumMembers");
    return devkit::hostStrings(devkit::membersOf(block_, name.GetUTF8Text()));
}

std::vector<NXString> PropertyList::GetEnumMembers(const char* name) {
    return GetEnumMembers(NXString(name));
}

void PropertyList::SetEnumMembers(const NXString& name, const std::vector<NXString>& members) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::SetEnumMembers");
    dialog_.setMembers(block_, name.GetUTF8Text(), devkit::utf8Texts(members));
}

void PropertyList::SetEnumMembers(const char* name, const std::vector<NXString>& members) {
    SetEnumMembers(NXString(name), members);
}

}  // namespace NXOpen::BlockStyler
