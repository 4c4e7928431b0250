// The host's session.
#pragma once

#include <NXOpen/TaggedObject.hxx>

namespace NXOpen {

class PartCollection;

class NXOPEN_EXPORT Session : public TaggedObject {
 public:
    static Session* GetSession();

    PartCollection* Parts();
};

}  // namespace NXOpen
