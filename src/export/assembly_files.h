// The files of the displayed part and, when it is an assembly, of its members.
//
// Host's thread only. No exception of a member or of the walk leaves these functions: the first is logged and leaves
// that member out, the second is logged and ends the collection with what it has.
#pragma once

#include "export/export_run.h"
#include "export/model_metadata.h"

#include <string>
#include <vector>

namespace NXOpen {
class BasePart;
}

namespace pivra {

/// What an upload of a part sends: the root first, then its members in walk order, each part once however often it is
/// placed. Empty for an assembly whose own file cannot be had.
struct CollectedFiles {
    std::vector<ModelFileEntry> entries;
    bool isAssembly = false;
    bool hasUnloadedComponents = false;  ///< members are missing because they are not loaded; the log names them
};

/// The files of a native part, copied into the run's folder.
CollectedFiles collectLocalUploadFiles(NXOpen::BasePart* part, ExportRun& run);

/// The files of a managed part: the root is `rootFile` (UTF-8), which exportManagedPart() made, and the members are the
/// files that lie in its folder under their part numbers. Without a root file there is no folder either.
CollectedFiles collectManagedUploadFiles(NXOpen::BasePart* part, const std::string& rootFile, ExportRun& run);

/// Collects the files of `part` by `metadata.isManaged` and `metadata.exportedFile`, and replaces `files`,
/// `isAssembly` and `hasUnloadedComponents` with them.
void collectUploadFiles(NXOpen::BasePart* part, ModelMetadata& metadata, ExportRun& run);

/// Number of entries that have a file to send.
std::size_t uploadedFileCount(const std::vector<ModelFileEntry>& entries);

}  // namespace pivra
