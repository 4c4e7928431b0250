// Modal message boxes.
#pragma once

#include <nxopen_export.h>
#include <NXOpen/NXString.hxx>

namespace NXOpen {

class NXOPEN_EXPORT NXMessageBox {
 public:
    enum DialogType { DialogTypeError, DialogTypeWarning, DialogTypeInformation, DialogTypeQuestion };

    /// The answer: 1 is yes, 2 is no.
    int Show(const NXString& title, DialogType msgboxType, const NXString& message);
};

}  // namespace NXOpen
