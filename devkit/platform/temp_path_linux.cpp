#include <platform/environment.h>
#include <platform/temp_path.h>

namespace platform {

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
