// The files that an export left in a folder.
#pragma once

#include "platform/files.h"

#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

namespace pivra {

struct ExportedFile {
    std::filesystem::path path;
    platform::FileFacts facts;
};

/// The ordinary files with the extension ".prt" or ".pdf", in any letter case, in `directory` and the folders below it.
/// Links are passed over, and so is what cannot be read, with a warning in the log. Never throws for the file system.
std::vector<ExportedFile> listExportedFiles(const std::filesystem::path& directory);

/// Finds the file of a part number: the one whose stem is the number as a file name (platform::sanitizeFileName()),
/// without regard to the case of ASCII letters. The extension is not compared, since the number has none; a .prt file
/// comes before a .pdf file, then the newer one.
class FilesByPartNumber {
 public:
    explicit FilesByPartNumber(const std::vector<ExportedFile>& files);

    /// Null when there is none.
    const ExportedFile* find(const std::string& partNumber) const;

 private:
    std::unordered_map<std::string, ExportedFile> files_;
};

}  // namespace pivra
