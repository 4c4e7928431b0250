#include "export/exported_files.h"

#include "logging/log.h"
#include "platform/error_text.h"
#include "platform/remove_tree.h"
#include "platform/text.h"
#include "platform/text_encoding.h"

#include <optional>
#include <tuple>

namespace pivra {

namespace fs = std::filesystem;

namespace {

bool isSupported(const std::string& name) {
    return platform::hasExtension(name, ".prt") || platform::hasExtension(name, ".pdf");
}

void addFile(const fs::path& path, std::vector<ExportedFile>& files) {
    const std::string name = platform::utf8FromPath(path);
    if (!isSupported(name)) return;
    if (const auto facts = platform::fileFacts(path)) return files.push_back({path, *facts});
    const auto error = platform::errorOf([&] { platform::fileSizeBytes(path); });
    logging::LogWarning("Exported file could not be read and is passed over:", logging::quoted("path", name),
                        logging::quoted("error", error ? *error : "it is no ordinary file now"));
}

bool isBetter(const ExportedFile& left, const ExportedFile& right) {
    const auto rank = [](const ExportedFile& file) {
        return std::tuple(platform::hasExtension(platform::utf8FromPath(file.path), ".prt"), file.facts.written);
    };
    return rank(left) > rank(right);
}

}  // namespace

std::vector<ExportedFile> listExportedFiles(const fs::path& directory) {
    // Not std::filesystem's recursive iterator, which follows links with some compilers.
    std::vector<ExportedFile> files;
    std::vector<fs::path> folders{directory};
    while (!folders.empty()) {
        const fs::path folder = folders.back();
        folders.pop_back();
        for (const auto& entry : platform::listDirectory(folder)) {
            const fs::path path = folder / entry.path.filename();
            if (entry.kind == platform::EntryKind::directory) folders.push_back(path);
            if (entry.kind == platform::EntryKind::file) addFile(path, files);
        }
    }
    return files;
}

FilesByPartNumber::FilesByPartNumber(const std::vector<ExportedFile>& files) {
    for (const auto& file : files) {
        const std::string key = platform::toLower(platform::fileStem(platform::utf8FromPath(file.path)));
        const auto [place, isNew] = files_.try_emplace(key, file);
        if (!isNew && isBetter(file, place->second)) place->second = file;
    }
}

const ExportedFile* FilesByPartNumber::find(const std::string& partNumber) const {
    if (partNumber.empty()) return nullptr;
    const auto found = files_.find(platform::toLower(platform::sanitizeFileName(partNumber)));
    return found == files_.end() ? nullptr : &found->second;
}

}  // namespace pivra
