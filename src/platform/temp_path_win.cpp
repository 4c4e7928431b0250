#include <platform/temp_path.h>

#include <windows.h>

#include <array>

namespace platform {

std::optional<std::filesystem::path> userTempDirectory() {
    std::array<wchar_t, MAX_PATH + 1> buffer{};
    const DWORD length = GetTempPathW(static_cast<DWORD>(buffer.size()), buffer.data());
    if (length == 0 || length >= buffer.size()) return std::nullopt;
    return std::filesystem::path(buffer.data(), buffer.data() + length);
}

}  // namespace platform
