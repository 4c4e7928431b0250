// The parts of the session.
#pragma once

#include <nxopen_export.h>

namespace NXOpen {

class BasePart;

class NXOPEN_EXPORT PartCollection {
 public:
    /// The displayed part; null when there is none.
    BasePart* BaseDisplay();
};

}  // namespace NXOpen
