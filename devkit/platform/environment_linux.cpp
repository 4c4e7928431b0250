#include "injected_fault.h"
#include "platform/environment.h"

#include <cstdlib>

namespace platform {

std::optional<std::filesystem::path> environmentPath(const char* name) {
    if (devkit::injectedError("platform::environmentPath", devkit::kinds::absent)) return std::nullopt;
    const char* value = std::getenv(name);
    return value ? std::optional<std::filesystem::path>(value) : std::nullopt;
}

std::optional<std::filesystem::path> userTempDirectory() {
    if (devkit::injectedError("platform::userTempDirectory", devkit::kinds::absent)) return std::nullopt;
    constexpr std::size_t room = 261;
    for (const char* name : {"TMPDIR", "TMP"}) {
        const auto directory = environmentPath(name);
        if (!directory || directory->empty()) continue;
        return directory->native().size() < room ? directory : std::nullopt;
    }
    return "/tmp";
}

}  // namespace platform
