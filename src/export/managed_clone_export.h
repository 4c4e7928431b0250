// Exports a part managed by Teamcenter, and the members of an assembly, to native files through the host's clone
// interface.
#pragma once

#include "export/export_run.h"

#include <uf_clone.h>
#include <string>

namespace NXOpen {
class BasePart;
}

namespace pivra {

/// Clones `part` (may be null) into the run's folder and returns the root file (UTF-8): the file named after the part's
/// number (see FilesByPartNumber), else the newest; empty when the clone wrote no .prt or .pdf file, with the reason in
/// the log. Files of an earlier clone count only when this one wrote them anew. Statuses of the clone interface are
/// logged and do not end the export: its result is judged by the files. Host's thread. Throws the errors of
/// sessionTempDirectory() and host exceptions.
std::string exportManagedPart(NXOpen::BasePart* part, const ExportRun& run);

/// Logs the names that `operation` could not give: their number, and the first five of them. Host's thread.
void reportNamingFailures(const std::string& operation, const UF_CLONE_naming_failures_t& failures);

}  // namespace pivra
