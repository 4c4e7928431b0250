// Text of the host in its encodings: UTF-8 in the model, the file-system code page in the C interface.
#pragma once

#include <NXOpen/NXString.hxx>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace devkit {

std::string utf8FromNarrow(const std::string& text);
std::string narrowFromUtf8(const std::string& text);

std::filesystem::path pathFromUtf8(const std::string& text);
std::string utf8FromPath(const std::filesystem::path& path);

inline NXOpen::NXString hostString(const std::string& utf8) {
    return NXOpen::NXString(utf8, NXOpen::NXString::UTF8);
}

std::vector<NXOpen::NXString> hostStrings(const std::vector<std::string>& utf8);
std::vector<std::string> utf8Texts(const std::vector<NXOpen::NXString>& texts);

/// Copies UTF-8 `text` into a buffer of the C interface; false when it does not fit.
bool copyNarrow(const std::string& text, char* buffer, std::size_t size);

}  // namespace devkit
