// Names of files that are exported.
#pragma once

#include "platform/file_names.h"

#include <string>
#include <string_view>

namespace pivra {

using platform::fileExtension;
using platform::fileStem;
using platform::lastPathComponent;

/// Whether `path` has the extension `extension` (lower case, with its full stop), whatever the letter case.
bool hasExtension(std::string_view path, std::string_view extension);

/// `name` with each of the nine characters that Windows reserves in file names replaced by "_"; "managed" for an empty
/// name.
std::string sanitizeFileName(std::string_view name);

}  // namespace pivra
