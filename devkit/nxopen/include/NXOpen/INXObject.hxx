// What every object of a part is, apart from its tag.
#pragma once

#include <nxopen_export.h>

namespace NXOpen {

class NXOPEN_EXPORT INXObject {
 public:
    virtual ~INXObject() = default;
};

}  // namespace NXOpen
