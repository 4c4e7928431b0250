// The system's number of the calling thread.
#pragma once

#include <cstdint>

namespace platform {

/// The number by which the system knows the calling thread (`GetCurrentThreadId`).
std::uint32_t currentThreadId();

}  // namespace platform
