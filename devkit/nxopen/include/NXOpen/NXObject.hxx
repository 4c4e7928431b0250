// Base of parts, components and sheets; carries user attributes.
#pragma once

#include <NXOpen/INXObject.hxx>
#include <NXOpen/NXString.hxx>
#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/Update.hxx>

namespace NXOpen {

/// User attributes: only those of type String are kept, and only with the index -1, as no array. Failures throw
/// NXException.
class NXOPEN_EXPORT NXObject : public TaggedObject, public virtual INXObject {
 public:
    enum AttributeType { AttributeTypeString = 5 };

    bool HasUserAttribute(const NXString& title, AttributeType type, int index);
    /// Throws when there is no such attribute.
    NXString GetUserAttributeAsString(const NXString& title, AttributeType type, int index);
    void SetUserAttribute(const NXString& title, int index, const NXString& value, Update::Option option);
    /// Throws when there is no such attribute.
    void DeleteUserAttribute(AttributeType type, const NXString& title, bool deleteEntireArray, Update::Option option);
};

}  // namespace NXOpen
