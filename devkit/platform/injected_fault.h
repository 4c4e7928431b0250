// How the Linux side of the platform passes the call interceptor, and fails.
#pragma once

#include <devkit/call_interceptor.h>

#include <array>
#include <filesystem>
#include <system_error>

namespace devkit {

namespace kinds {

inline constexpr std::array system{FaultKind::error};
inline constexpr std::array absent{FaultKind::missing};
inline constexpr std::array access{FaultKind::denied};
inline constexpr std::array look{FaultKind::denied, FaultKind::vanished};
inline constexpr std::array create{FaultKind::denied, FaultKind::full};
inline constexpr std::array write{FaultKind::denied, FaultKind::shared, FaultKind::full};
inline constexpr std::array copy{FaultKind::denied, FaultKind::shared, FaultKind::full, FaultKind::vanished};
inline constexpr std::array remove{FaultKind::denied, FaultKind::shared};

}  // namespace kinds

/// Enters a call of the platform, which may be about `path`; the system's error with which it is to fail, if it is. A
/// file that is to vanish is deleted, and the call goes on.
std::error_code injectedError(const char* call, FaultKinds kinds, const std::filesystem::path& path = {});

}  // namespace devkit
