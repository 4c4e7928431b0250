#include "export/session_temp_directories.h"

#include "config/properties.h"
#include "logging/log.h"
#include "platform/environment.h"
#include "platform/error_text.h"
#include "platform/files.h"
#include "platform/remove_tree.h"
#include "platform/text.h"
#include "platform/text_encoding.h"
#include "platform/thread.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <stdexcept>
#include <thread>

namespace pivra {

namespace fs = std::filesystem;

namespace {

constexpr const char* retainKey = "pivra_nx_retain_temp_files";
constexpr const char* namePrefix = "pivra-";
constexpr int allocationAttempts = 32;

struct ProcessState {
    std::atomic<std::uint32_t> lock{0};     ///< guards the members below `counter`
    std::atomic<std::uint64_t> counter{0};  ///< of the folders made so far
    std::optional<fs::path> tempBaseDirectory;
    std::optional<std::string> currentSessionKey;
    std::optional<std::string> currentSessionDirectoryName;
    /// Keeps another session of the host from sweeping the current directory away.
    std::shared_ptr<void> hold;
};

ProcessState& process() {
    static ProcessState instance;
    return instance;
}

/// Holds the lock of the state. A spin lock, since it is never held for longer than a few file operations.
class StateLock {
 public:
    StateLock() {
        while (process().lock.exchange(1, std::memory_order_acquire) == 1) std::this_thread::yield();
    }
    ~StateLock() { process().lock.store(0, std::memory_order_release); }
    StateLock(const StateLock&) = delete;
    StateLock& operator=(const StateLock&) = delete;
};

fs::path findBaseDirectory() {
    if (const auto temp = platform::userTempDirectory()) return *temp;
    const auto localData = platform::environmentPath("LOCALAPPDATA");
    if (localData && !localData->empty()) {
        auto temp = *localData / "Temp";
        platform::createDirectories(temp);
        return temp;
    }
    throw std::runtime_error("Unable to resolve base directory for session temp files.");
}

/// Resolved once per process; after a failure the next call tries again. Call with the lock held.
const fs::path& baseDirectory() {
    auto& base = process().tempBaseDirectory;
    if (!base) base = findBaseDirectory();
    return *base;
}

void logRetained(const std::string& cleanup) {
    logging::LogDebug("Skipping " + cleanup + " because " + retainKey + " is true.");
}

void logKept(logging::LogLevel level, const char* head, const fs::path& directory, const std::error_code& error) {
    logging::Log(level, head, logging::quoted("directory", platform::utf8FromPath(directory)),
                 logging::quoted("error", platform::errorText(error)));
}

void deleteTree(const fs::path& directory) {
    const std::error_code error = platform::removeTree(directory);
    if (!error) return;
    logKept(logging::LogLevel::warning, "Temp directory could not be deleted and stays behind:", directory, error);
}

void sweepTree(const fs::path& directory) {
    const std::error_code error = platform::removeTree(directory);
    if (!error) return;
    const bool isInUse = error.value() == platform::errorSharingViolation;
    logKept(isInUse ? logging::LogLevel::debug : logging::LogLevel::warning,
            isInUse ? "Temp directory is in use and stays:" : "Stale temp directory could not be deleted:", directory,
            error);
}

void deleteCurrentUnlessRetained() {
    process().hold.reset();
    if (retainTempFiles()) {
        logRetained("temp directory cleanup");
    } else {
        deleteTree(baseDirectory() / *process().currentSessionDirectoryName);
    }
}

const fs::path& ensureExists(const fs::path& directory) {
    std::error_code error;
    const auto kind = platform::pathKind(directory, error);
    if (error) throw std::runtime_error("Failed to check session temp directory existence.");
    if (kind == platform::PathKind::directory) return directory;
    if (kind == platform::PathKind::other) {
        throw std::runtime_error("Session temp path exists but is not a directory.");
    }
    platform::createDirectory(directory, error);
    if (error) throw std::runtime_error("Failed to create session temp directory.");
    process().hold = platform::holdDirectory(directory);
    return directory;
}

std::string nextToken() {
    const std::uint64_t count = process().counter.fetch_add(1);
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    return sessionToken(count, platform::currentThreadId(), static_cast<std::uint64_t>(nanoseconds));
}

fs::path allocateDirectory() {
    for (int attempt = 0; attempt < allocationAttempts; ++attempt) {
        const std::string name = namePrefix + nextToken();
        fs::path directory = baseDirectory() / name;
        std::error_code error;
        if (!platform::createDirectory(directory, error)) continue;
        process().currentSessionDirectoryName = name;
        process().hold = platform::holdDirectory(directory);
        return directory;
    }
    throw std::runtime_error("Unable to allocate a unique session temp directory.");
}

void deleteSessionDirectoriesIn(const fs::path& base) {
    for (const auto& entry : platform::listDirectory(base)) {
        const fs::path name = entry.path.filename();
        const bool hasPrefix = platform::utf8FromPath(name).rfind(namePrefix, 0) == 0;
        if (hasPrefix && entry.kind == platform::EntryKind::directory) sweepTree(base / name);
    }
}

}  // namespace

fs::path sessionTempDirectory(const std::string& sessionKey) {
    const StateLock lock;
    const fs::path& base = baseDirectory();
    const std::string key = sessionKey.empty() ? "__default__" : sessionKey;
    auto& name = process().currentSessionDirectoryName;
    auto& currentKey = process().currentSessionKey;
    if (name && currentKey && *currentKey != key) {
        deleteCurrentUnlessRetained();
        name.reset();
    }
    if (name) return ensureExists(base / *name);
    currentKey = key;
    return allocateDirectory();
}

void cleanupSessionTempDirectory() noexcept {
    const StateLock lock;
    try {
        if (process().currentSessionDirectoryName) deleteCurrentUnlessRetained();
    } catch (...) {
        // A later launch sweeps what is left.
    }
    process().currentSessionKey.reset();
    process().currentSessionDirectoryName.reset();
}

void cleanupStaleSessionTempDirectories() {
    if (retainTempFiles()) return logRetained("stale temp directory cleanup");
    fs::path base;
    try {
        const StateLock lock;
        base = baseDirectory();
    } catch (const std::runtime_error& error) {
        return logging::LogWarning(error.what());
    }
    deleteSessionDirectoriesIn(base);
}

bool retainTempFiles() {
    return platform::toLower(config::GetProperty(retainKey)) == "true";
}

std::string sessionToken(std::uint64_t count, std::uint32_t threadId, std::uint64_t nanoseconds) {
    std::uint64_t hash = 0xcbf29ce484222325;  // FNV-1a, 64 bits
    for (int shift = 0; shift < 32; shift += 8) {
        hash ^= (threadId >> shift) & 0xff;
        hash *= 0x100000001b3;
    }
    const std::uint64_t value = (count * 0x9e3779b97f4a7c15) ^ (2 * hash) ^ nanoseconds;
    std::string token;
    for (int shift = 60; shift >= 0; shift -= 4) token += "0123456789abcdef"[(value >> shift) & 0xf];
    return token;
}

}  // namespace pivra
