#include <devkit/session.h>
#include <NXOpen/BasePart.hxx>
#include <NXOpen/NXObject.hxx>

#include <nlohmann/json.hpp>

#include "calls.h"
#include "host_text.h"

namespace NXOpen {

namespace {

devkit::PartData& attributeOwner(NXObject& object) {
    auto* part = dynamic_cast<BasePart*>(&object);
    if (part == nullptr) devkit::fail("The object carries no user attributes.");
    return part->data();
}

bool has(NXObject& object, const std::string& title, NXObject::AttributeType type, int index) {
    const bool kept = type == NXObject::AttributeTypeString || type == NXObject::AttributeTypeAny;
    return kept && index == -1 && attributeOwner(object).attributes.count(title) != 0;
}

NXString get(NXObject& object, const std::string& title, NXObject::AttributeType type, int index) {
    if (!has(object, title, type, index)) devkit::fail("The object has no attribute \"" + title + "\" of that type.");
    return devkit::hostString(attributeOwner(object).attributes.at(title));
}

void set(NXObject& object, const std::string& title, int index, const std::string& value) {
    if (index != -1) devkit::fail("The attribute \"" + title + "\" is no array.");
    devkit::PartData& part = attributeOwner(object);
    part.attributes[title] = value;
    part.modified = true;
    devkit::Session::instance().report("attribute-written", {{"part", part.name}, {"title", title}, {"value", value}});
}

void remove(NXObject& object, NXObject::AttributeType type, const std::string& title) {
    if (!has(object, title, type, -1)) devkit::fail("The object has no attribute \"" + title + "\" of that type.");
    devkit::PartData& part = attributeOwner(object);
    part.attributes.erase(title);
    part.modified = true;
    devkit::Session::instance().report("attribute-deleted", {{"part", part.name}, {"title", title}});
}

}  // namespace

INXObject::~INXObject() = default;

NXString NXObject::Name() {
    return NXString();
}

bool NXObject::IsOccurrence() {
    return false;
}

INXObject* NXObject::Prototype() {
    return nullptr;
}

bool NXObject::HasUserAttribute(const NXString& title, AttributeType type, int index) {
    devkit::enter("NXOpen::NXObject::HasUserAttribute");
    return has(*this, title.GetUTF8Text(), type, index);
}

bool NXObject::HasUserAttribute(const char* title, AttributeType type, int index) {
    return HasUserAttribute(NXString(title), type, index);
}

NXString NXObject::GetUserAttributeAsString(const NXString& title, AttributeType type, int index) {
    devkit::enter("NXOpen::NXObject::GetUserAttributeAsString");
    return get(*this, title.GetUTF8Text(), type, index);
}

NXString NXObject::GetUserAttributeAsString(const char* title, AttributeType type, int index) {
    return GetUserAttributeAsString(NXString(title), type, index);
}

NXString NXObject::GetStringUserAttribute(const NXString& title, int index) {
    devkit::enter("NXOpen::NXObject::GetStringUserAttribute");
    return get(*this, title.GetUTF8Text(), AttributeTypeString, index);
}

NXString NXObject::GetStringUserAttribute(const char* title, int index) {
    return GetStringUserAttribute(NXString(title), index);
}

void NXObject::SetUserAttribute(const NXString& title, int index, const NXString& value, Update::Option) {
    devkit::enter("NXOpen::NXObject::SetUserAttribute");
    set(*this, title.GetUTF8Text(), index, value.GetUTF8Text());
}

void NXObject::SetUserAttribute(const char* title, int index, const char* value, Update::Option option) {
    SetUserAttribute(NXString(title), index, NXString(value), option);
}

void NXObject::DeleteUserAttribute(AttributeType type, const NXString& title, bool, Update::Option) {
    devkit::enter("NXOpen::NXObject::DeleteUserAttribute");
    remove(*this, type, title.GetUTF8Text());
}

void NXObject::DeleteUserAttribute(AttributeType type, const char* title, bool entireArray, Update::Option option) {
    DeleteUserAttribute(type, NXString(title), entireArray, option);
}

}  // namespace NXOpen
