// When a change takes effect.
#pragma once

#include <nxopen_export.h>

namespace NXOpen {

class NXOPEN_EXPORT Update {
 public:
    enum Option { OptionNow, OptionLater };
};

}  // namespace NXOpen
