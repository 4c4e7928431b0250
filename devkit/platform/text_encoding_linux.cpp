// Names are bytes here, and taken to be UTF-8.
#include <platform/text_encoding.h>

namespace platform {

std::string utf8FromPath(const std::filesystem::path& path) {
    return path.native();
}

std::filesystem::path pathFromUtf8(std::string_view text) {
    return text;
}

std::string fileSystemTextFromPath(const std::filesystem::path& path) {
    return path.native();
}

std::filesystem::path pathFromFileSystemText(std::string_view text) {
    return text;
}

}  // namespace platform
