// Makes the record of the displayed part ready to be sent.
#pragma once

#include "export/model_metadata.h"

#include <memory>

namespace pivra {

/// Refreshes `metadata` in place, exports what has to be exported and leaves in it what the upload sends. Leaves the
/// record as it is when no part is displayed; sets `uploadBlockedReason` when a native model was never saved.
/// Host's thread. Throws std::runtime_error with the text to show when an identifier could not be repaired, after the
/// record is complete, and passes on the errors of the export.
void prepareUploadFiles(const std::shared_ptr<ModelMetadata>& metadata);

}  // namespace pivra
