// What every object of a part answers; apart from its tag.
#pragma once

#include <nxopen_export.h>
#include <NXOpen/NXString.hxx>

namespace NXOpen {

class NXOPEN_EXPORT INXObject {
 public:
    virtual ~INXObject();

    virtual NXString Name() = 0;
    virtual bool IsOccurrence() = 0;
    /// Of an occurrence, what it is an occurrence of; null when that is not loaded.
    virtual INXObject* Prototype() = 0;
};

}  // namespace NXOpen
