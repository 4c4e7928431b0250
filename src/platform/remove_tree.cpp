#include "platform/remove_tree.h"

namespace platform {
namespace {

constexpr int errorFileNotFound = 2;     // ERROR_FILE_NOT_FOUND
constexpr int errorPathNotFound = 3;     // ERROR_PATH_NOT_FOUND
constexpr int errorNotEnoughMemory = 8;  // ERROR_NOT_ENOUGH_MEMORY
constexpr int maximalPasses = 10;

/// Something that is already gone counts as removed.
std::error_code unlessGone(std::error_code error) {
    const bool gone = error.value() == errorFileNotFound || error.value() == errorPathNotFound;
    return gone ? std::error_code() : error;
}

bool canBeRetried(std::error_code error) {
    return error.value() == errorDirectoryNotEmpty || error.value() == errorAccessDenied;
}

std::error_code removeOnce(const std::filesystem::path& directory, const TreeOperations& operations);

std::error_code removeEntry(const DirectoryEntry& entry, const TreeOperations& operations) {
    switch (entry.kind) {
        case EntryKind::directory:
            return removeOnce(entry.path, operations);
        case EntryKind::directoryLink:
            return unlessGone(operations.removeDirectory(entry.path));
        default:
            return unlessGone(operations.removeFile(entry.path));
    }
}

std::error_code removeOnce(const std::filesystem::path& directory, const TreeOperations& operations) {
    const auto error = unlessGone(operations.removeDirectory(directory));
    if (error.value() != errorDirectoryNotEmpty) return error;
    std::error_code kept;
    for (const auto& entry : operations.list(directory)) {
        const auto entryError = removeEntry(entry, operations);
        if (entryError && !canBeRetried(entryError)) return entryError;
        if (entryError) kept = entryError;
    }
    return kept ? kept : unlessGone(operations.removeDirectory(directory));
}

}  // namespace

std::error_code removeTree(const std::filesystem::path& directory) noexcept {
    try {
        return removeTree(directory, systemTreeOperations(directory));
    } catch (...) {
        return {errorNotEnoughMemory, std::system_category()};
    }
}

std::error_code removeTree(const std::filesystem::path& directory, const TreeOperations& operations) noexcept {
    try {
        auto error = removeOnce(directory, operations);
        for (int pass = 1; pass < maximalPasses && canBeRetried(error); ++pass) {
            error = removeOnce(directory, operations);
        }
        return error;
    } catch (...) {
        return {errorNotEnoughMemory, std::system_category()};
    }
}

}  // namespace platform
