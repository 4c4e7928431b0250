// Turning the calling thread's message loop.
#pragma once

#include <chrono>

namespace test_support {

/// Delivers what falls due within `span`: in real time on Windows, at once elsewhere.
void turnMessageLoop(std::chrono::milliseconds span);

}  // namespace test_support
