#include <platform/environment.h>

#include <cstdlib>

namespace platform {

std::optional<std::filesystem::path> environmentPath(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::optional<std::filesystem::path>(value) : std::nullopt;
}

}  // namespace platform
