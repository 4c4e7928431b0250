// The folder that exports write into: one at a time and a process, under the user's temporary folder, named "pivra-"
// and 16 hexadecimal digits.
//
// The setting `pivra_nx_retain_temp_files` ("true" in any case) keeps every folder on disk. Any thread: one lock guards
// the state, and is held during file-system work.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace pivra {

/// The folder for exports under `sessionKey` (an empty key has a name of its own). The same key gives the same folder,
/// created again if it vanished; another key deletes it and gives a new one. Throws std::runtime_error with one of the
/// five messages that docs/troubleshooting.md explains.
std::filesystem::path sessionTempDirectory(const std::string& sessionKey);

/// Deletes the current folder unless it is to be kept, and forgets it and its key. Never throws.
void cleanupSessionTempDirectory() noexcept;

/// Deletes the folders that earlier runs left behind: every folder whose name begins with "pivra-", whatever its age,
/// but those that a session of the host holds, this one included. For the start of a run.
void cleanupStaleSessionTempDirectories();

/// The setting, read afresh.
bool retainTempFiles();

/// The 16 digits for the `count`th folder of this process, made on `threadId` at `nanoseconds` of the steady clock.
std::string sessionToken(std::uint64_t count, std::uint32_t threadId, std::uint64_t nanoseconds);

}  // namespace pivra
