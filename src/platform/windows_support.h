// Helpers that the Windows sources of this folder share. Those without a system call are defined here, so that they can
// be tested on any system. Any thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <ratio>
#include <string>
#include <system_error>

namespace platform {

/// `GetLastError` in the system category.
std::error_code lastError();

/// A handle that is closed by `CloseHandle`; null when there is none.
struct HandleCloser {
    void operator()(void* handle) const noexcept;
};
using Handle = std::unique_ptr<void, HandleCloser>;

/// `path` in full, in the form `\\?\...` that the wide functions of Windows take at any length (plain names end at 260
/// characters, unless the host's process and the computer are set up otherwise). A path that Windows cannot complete
/// comes back as it is.
std::wstring extendedPath(const std::filesystem::path& path);

/// True for the tag of a symbolic link, a mount point or another stand-in for a name ("name surrogate", bit 29). False
/// for the tags of files that are deduplicated, compressed or kept in a cloud: those are ordinary files and folders. A
/// tag that the system does not tell (0) counts as a link, so that it is never entered.
constexpr bool isLinkTag(std::uint32_t tag) {
    constexpr std::uint32_t nameSurrogate = 0x20000000;
    return tag == 0 || (tag & nameSurrogate) != 0;
}

/// Whether a file or folder with these attributes is a link. The tag is ignored unless it is a reparse point.
bool isLink(std::uint32_t attributes, std::uint32_t tag);
/// The same for the file or folder `name` (in extended form), whose tag is read if it is needed.
bool isLink(std::uint32_t attributes, const std::wstring& name);

/// Steps of 100 ns since the start of 1601, UTC.
using WindowsTicks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

inline constexpr std::chrono::seconds from1601To1970{11'644'473'600};

/// A FILETIME's two halves as one count.
constexpr WindowsTicks joinTicks(std::uint32_t high, std::uint32_t low) {
    return WindowsTicks(static_cast<std::int64_t>(std::uint64_t{high} << 32 | low));
}

/// Size of the first buffer that is tried, in characters.
inline constexpr std::size_t firstBufferSize = 260;

/// Text from a call that truncates what does not fit: `read(buffer, size)` gives the number of units written, 0 for
/// failure. The buffer doubles until the text leaves room at its end. Empty on failure.
template <typename Read>
std::wstring readTruncatedText(Read read) {
    std::wstring buffer(firstBufferSize, L'\0');
    for (;;) {
        const std::size_t length = read(buffer.data(), buffer.size());
        if (length == 0) return {};
        if (length < buffer.size() - 1) {
            buffer.resize(length);
            return buffer;
        }
        buffer.resize(buffer.size() * 2);
    }
}

/// Text from a call that tells the size it needs: `read(buffer, size)` gives the length of the text when it fits
/// into `size` units with its terminator, the size needed when it does not, and nothing when there is no text. The text
/// may change between two calls.
template <typename Read>
std::optional<std::wstring> readSizedText(Read read) {
    std::wstring buffer(firstBufferSize, L'\0');
    for (;;) {
        const std::optional<std::size_t> length = read(buffer.data(), buffer.size());
        if (!length) return std::nullopt;
        const bool isWhole = *length < buffer.size();
        buffer.resize(*length);
        if (isWhole) return buffer;
    }
}

}  // namespace platform
