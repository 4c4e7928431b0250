// Base of builders: set up, commit, destroy.
#pragma once

#include <NXOpen/TaggedObject.hxx>

namespace NXOpen {

class NXObject;

class NXOPEN_EXPORT Builder : public TaggedObject {
 public:
    virtual NXObject* Commit() = 0;
    /// Ends the builder, which is gone afterwards even when this throws.
    void Destroy();

 protected:
    Builder();
    ~Builder() override;
};

}  // namespace NXOpen
