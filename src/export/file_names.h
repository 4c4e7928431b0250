// Names of files as texts. The host's names are no paths of this system at times ("@DB/4711/A"), so they are cut as
// texts.
#pragma once

#include <string>
#include <string_view>

namespace pivra {

/// The text after the last "\" or "/"; all of it when there is neither.
std::string lastPathComponent(std::string_view path);

/// The last component from its last full stop on; empty when it has none, or only at its beginning.
std::string fileExtension(std::string_view path);

/// The last component without its extension.
std::string fileStem(std::string_view path);

/// Whether `path` has the extension `extension` (lower case, with its full stop), whatever the letter case.
bool hasExtension(std::string_view path, std::string_view extension);

/// `name` with each of the nine characters that Windows reserves in file names replaced by "_"; "managed" for an empty
/// name.
std::string sanitizeFileName(std::string_view name);

}  // namespace pivra
