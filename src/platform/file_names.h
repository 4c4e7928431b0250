// Names of files as texts. The host's names are no paths of this system at times ("@DB/4711/A"), so they are cut as
// texts. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace platform {

/// The text after the last "\" or "/"; all of it when there is neither.
std::string lastPathComponent(std::string_view path);

/// The last component from its last full stop on; empty when it has none, or only at its beginning.
std::string fileExtension(std::string_view path);

/// The last component without its extension.
std::string fileStem(std::string_view path);

}  // namespace platform
