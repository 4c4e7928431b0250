// What a save left unsaved. The caller deletes it.
#pragma once

#include <NXOpen/TransientObject.hxx>

namespace NXOpen {

class NXOPEN_EXPORT PartSaveStatus : public TransientObject {
 public:
    PartSaveStatus(int unsavedParts, int unsavedObjects)
        : unsavedParts_(unsavedParts), unsavedObjects_(unsavedObjects) {}

    int NumberUnsavedParts();
    int NumberUnsavedObjects();

 private:
    int unsavedParts_;
    int unsavedObjects_;
};

}  // namespace NXOpen
