// Texts of unknown length from system calls that fill a buffer of the caller's. The calls are handed in, so that their
// answers can be played.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace platform {

/// Room that is tried first, in units.
inline constexpr std::size_t firstBufferSize = 260;

/// Text from a call that cuts what does not fit: `read(buffer, size)` gives the number of units written, 0 for failure.
/// The buffer doubles until the text leaves room at its end. Empty on failure.
template <typename Read>
std::wstring readCuttingCall(Read read) {
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

/// Text from a call that says how much room it needs: `read(buffer, size)` gives the length of the text when it fits
/// into `size` units with its terminator, the size needed when it does not, and nothing when there is no text. The text
/// may change between two calls.
template <typename Read>
std::optional<std::wstring> readMeasuringCall(Read read) {
    std::wstring buffer(firstBufferSize, L'\0');
    for (;;) {
        const std::optional<std::size_t> length = read(buffer.data(), buffer.size());
        if (!length) return std::nullopt;
        const bool fits = *length < buffer.size();
        buffer.resize(*length);
        if (fits) return buffer;
    }
}

}  // namespace platform
