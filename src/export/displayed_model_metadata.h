// Reads everything the dialogs show of the displayed part.
#pragma once

#include "export/model_metadata.h"
#include "platform/files.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace pivra {

/// A new record of the displayed part, or of there being none. Reads only: no part is written to. Host's thread. Throws
/// std::filesystem::filesystem_error ("file_size", "last_write_time") when the file of a native part vanishes
/// meanwhile, and host exceptions of the displayed part itself.
std::shared_ptr<ModelMetadata> readDisplayedModelMetadata();

/// `time` in local time as "%B %d, %Y - %I:%M %p" with English month names, whatever the process's locale.
std::string formatDisplayTime(platform::FileTime time);

/// `time` in UTC as "%Y-%m-%dT%H:%M:%SZ".
std::string formatUtcTime(platform::FileTime time);

using platform::fileSizeBytes;

/// Sum in MiB over the entries' upload files, or their source files where there is none to upload; what is missing or
/// no ordinary file adds nothing.
double totalSizeMb(const std::vector<ModelFileEntry>& files);

}  // namespace pivra
