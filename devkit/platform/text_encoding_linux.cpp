// Names are bytes here, and taken to be UTF-8.
#include "injected_fault.h"
#include "platform/text.h"
#include "platform/text_encoding.h"

#include <algorithm>

namespace platform {
namespace {

void requireConversion(const char* call) {
    const auto fault = devkit::injectedError(call, devkit::kinds::system);
    if (fault) throw std::system_error(fault, "name conversion");
}

}  // namespace

std::string utf8FromPath(const std::filesystem::path& path) {
    return path.native();
}

std::filesystem::path pathFromUtf8(std::string_view text) {
    return text;
}

// The code page is Latin-1.
std::string utf8FromSystemText(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const auto length = utf8CharacterLength(text);
        if (length > 0) {
            result += text.substr(0, length);
        } else {
            const auto letter = static_cast<unsigned char>(text.front());
            result += {static_cast<char>(0xC0 | letter >> 6), static_cast<char>(0x80 | (letter & 0x3F))};
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

std::string fileSystemTextFromPath(const std::filesystem::path& path) {
    requireConversion("platform::fileSystemTextFromPath");
    return path.native();
}

std::filesystem::path pathFromFileSystemText(std::string_view text) {
    requireConversion("platform::pathFromFileSystemText");
    return text;
}

}  // namespace platform
