#include "platform/files.h"

namespace platform {

std::optional<FileFacts> fileFacts(const std::filesystem::path& file) {
    if (!isRegularFile(file)) return std::nullopt;
    try {
        return FileFacts{fileSizeBytes(file), lastWriteTime(file)};
    } catch (const std::filesystem::filesystem_error&) {
        if (isRegularFile(file)) throw;
        return std::nullopt;
    }
}

}  // namespace platform
