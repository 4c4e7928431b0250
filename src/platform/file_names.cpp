#include "platform/file_names.h"

namespace platform {

std::string lastPathComponent(std::string_view path) {
    const auto separator = path.find_last_of("\\/");
    return std::string(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

std::string fileExtension(std::string_view path) {
    const std::string name = lastPathComponent(path);
    const auto dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? std::string() : name.substr(dot);
}

std::string fileStem(std::string_view path) {
    std::string name = lastPathComponent(path);
    name.resize(name.size() - fileExtension(name).size());
    return name;
}

}  // namespace platform
