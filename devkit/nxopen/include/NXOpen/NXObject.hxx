// Base of parts, components and sheets; carries user attributes.
#pragma once

#include <NXOpen/INXObject.hxx>
#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/Update.hxx>

namespace NXOpen {

/// User attributes: only those of type String are kept, and only with the index -1, as no array. Text parameters of one
/// call are all of one kind. Failures throw NXException.
class NXOPEN_EXPORT NXObject : public TaggedObject, public virtual INXObject {
 public:
    enum AttributeType {
        AttributeTypeInvalid,
        AttributeTypeNull,
        AttributeTypeBoolean,
        AttributeTypeInteger,
        AttributeTypeReal,
        AttributeTypeString,
        AttributeTypeTime,
        AttributeTypeReference,
        AttributeTypeAny = 100
    };

    NXString Name() override;
    bool IsOccurrence() override;
    INXObject* Prototype() override;

    bool HasUserAttribute(const NXString& title, AttributeType type, int index);
    bool HasUserAttribute(const char* title, AttributeType type, int index);

    /// Throws when there is no such attribute.
    NXString GetUserAttributeAsString(const NXString& title, AttributeType type, int index);
    NXString GetUserAttributeAsString(const char* title, AttributeType type, int index);
    NXString GetStringUserAttribute(const NXString& title, int index);
    NXString GetStringUserAttribute(const char* title, int index);

    void SetUserAttribute(const NXString& title, int index, const NXString& value, Update::Option option);
    void SetUserAttribute(const char* title, int index, const char* value, Update::Option option);

    /// Throws when there is no such attribute.
    void DeleteUserAttribute(AttributeType type, const NXString& title, bool deleteEntireArray, Update::Option option);
    void DeleteUserAttribute(AttributeType type, const char* title, bool deleteEntireArray, Update::Option option);
};

}  // namespace NXOpen
