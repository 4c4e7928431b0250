// Prints the drawing sheets of a part into one PDF file.
#pragma once

#include "export/export_run.h"

#include <string>

namespace NXOpen {
class BasePart;
}

namespace pivra {

/// Prints all sheets of `part` (may be null), whose full path is `sourcePath`, into the run's folder and returns the
/// file (UTF-8); empty when there is nothing to print or no new file came of it, with the reason in the log. Host's
/// thread. Throws the errors of sessionTempDirectory() and host exceptions.
std::string exportDrawingPdf(NXOpen::BasePart* part, const std::string& sourcePath, const ExportRun& run);

/// Name of the PDF file without extension: the number of a managed part, else the stem of the part's leaf name, else
/// that of `sourcePath`, made a file name by platform::sanitizeFileName(); "drawing" when all are empty.
std::string drawingPdfBaseName(NXOpen::BasePart* part, const std::string& sourcePath);

}  // namespace pivra
