// Turns a part into a local file: chooses the way, and copies native parts.
#pragma once

#include "export/export_run.h"

#include <string>

namespace NXOpen {
class BasePart;
}

namespace pivra {

/// Exports `part` (may be null), whose full path is `sourcePath`, into the run's folder and returns the root file
/// (UTF-8); empty when there is nothing to export, with the reason in the log. Serves the displayed part and, for a
/// native assembly, its members. Host's thread. Throws the errors of sessionTempDirectory() and of the export that was
/// chosen.
std::string exportDisplayedModel(NXOpen::BasePart* part, const std::string& sourcePath, ExportRun& run);

/// Copies the native part file `sourcePath` (UTF-8) under its own name into the run's folder and returns the copy; a
/// file that lies there already, or that this run has copied, is returned as it is; empty for an empty path. Host's
/// thread. Throws std::filesystem::filesystem_error of the operation "copy_file".
std::string copyLocalModel(const std::string& sourcePath, ExportRun& run);

}  // namespace pivra
