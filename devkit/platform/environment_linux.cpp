#include "platform/environment.h"

#include <cstdlib>

namespace platform {

std::optional<std::filesystem::path> environmentPath(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::optional<std::filesystem::path>(value) : std::nullopt;
}

std::optional<std::filesystem::path> userTempDirectory() {
    constexpr std::size_t room = 261;
    for (const char* name : {"TMPDIR", "TMP"}) {
        const auto directory = environmentPath(name);
        if (!directory || directory->empty()) continue;
        return directory->native().size() < room ? directory : std::nullopt;
    }
    return "/tmp";
}

}  // namespace platform
