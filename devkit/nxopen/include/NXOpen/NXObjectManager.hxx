// From tags to objects.
#pragma once

#include <NXOpen/TaggedObject.hxx>

namespace NXOpen {

class NXOPEN_EXPORT NXObjectManager {
 public:
    /// The object with that tag; throws NXException when there is none, returns null for the null tag.
    static TaggedObject* Get(tag_t tag);
};

}  // namespace NXOpen
