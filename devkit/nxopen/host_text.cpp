#include "host_text.h"

#include <cstring>

namespace devkit {

std::filesystem::path pathFromUtf8(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string utf8FromPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

std::vector<NXOpen::NXString> hostStrings(const std::vector<std::string>& utf8) {
    std::vector<NXOpen::NXString> result;
    for (const std::string& text : utf8) result.push_back(hostString(text));
    return result;
}

std::vector<std::string> utf8Texts(const std::vector<NXOpen::NXString>& texts) {
    std::vector<std::string> result;
    for (const NXOpen::NXString& text : texts) result.emplace_back(text.GetUTF8Text());
    return result;
}

bool copyNarrow(const std::string& text, char* buffer, std::size_t size) {
    const std::string narrow = narrowFromUtf8(text);
    if (narrow.size() >= size) return false;
    std::memcpy(buffer, narrow.c_str(), narrow.size() + 1);
    return true;
}

}  // namespace devkit
