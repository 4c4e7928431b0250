// Loading of a native library. Once loaded it stays for the process: its threads may still be on their way out when the
// last client goes.
#pragma once

#include <string>

namespace cpp_piv {

/// Loads the library with that full name (file-system code page) and returns its handle. The library's own neighbours
/// are looked for beside it. Any thread. Throws std::runtime_error, naming the library in UTF-8, when it cannot be
/// loaded.
void* loadNativeLibrary(const std::string& path);

/// Address of the function that a loaded library exports as `name`, or null. Any thread.
void* findNativeFunction(void* library, const char* name);

}  // namespace cpp_piv
