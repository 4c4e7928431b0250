// Statuses of the C interface beside those that its headers name.
#pragma once

namespace devkit::status {

inline constexpr int wrongThread = 1000001;
inline constexpr int notInitialized = 1000002;
inline constexpr int badTag = 1000003;
inline constexpr int textTooLong = 1000004;
inline constexpr int badName = 1000005;
inline constexpr int notFound = 1000006;
inline constexpr int emptyStack = 1000007;

/// The call was refused as a broken rule, not made to fail: then it has no effect at all.
inline bool refused(int status) {
    return status == wrongThread || status == notInitialized;
}

}  // namespace devkit::status
