// Base of everything in the session that has a tag.
#pragma once

#include <nxopen_export.h>
#include <uf_defs.h>

namespace NXOpen {

class NXOPEN_EXPORT TaggedObject {
 public:
    virtual ~TaggedObject();
    TaggedObject(const TaggedObject&) = delete;
    TaggedObject& operator=(const TaggedObject&) = delete;

    tag_t Tag() const { return tag_; }

 protected:
    /// Takes the next tag, under which the C interface finds the object while it lives.
    TaggedObject();

 private:
    tag_t tag_;
};

}  // namespace NXOpen
