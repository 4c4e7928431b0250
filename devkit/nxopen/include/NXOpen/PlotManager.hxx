// Printing of a part.
#pragma once

#include <nxopen_export.h>

namespace NXOpen {

class PrintPDFBuilder;

class NXOPEN_EXPORT PlotManager {
 public:
    explicit PlotManager(devkit::PartData& part) : part_(part) {}

    /// The caller ends it with Destroy().
    PrintPDFBuilder* CreatePrintPdfbuilder();

 private:
    devkit::PartData& part_;
};

}  // namespace NXOpen
