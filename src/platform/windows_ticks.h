// The count in which Windows keeps file and system times.
#pragma once

#include <chrono>
#include <cstdint>
#include <ratio>

namespace platform {

/// Steps of 100 ns since the start of 1601, UTC.
using WindowsTicks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

inline constexpr std::chrono::seconds from1601To1970{11'644'473'600};

/// A FILETIME's two halves as one count.
constexpr WindowsTicks joinTicks(std::uint32_t high, std::uint32_t low) {
    return WindowsTicks(static_cast<std::int64_t>(std::uint64_t{high} << 32 | low));
}

}  // namespace platform
