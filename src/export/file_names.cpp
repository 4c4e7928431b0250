#include "export/file_names.h"

#include "config/properties.h"

namespace pivra {

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

bool hasExtension(std::string_view path, std::string_view extension) {
    return config::toLower(fileExtension(path)) == extension;
}

std::string sanitizeFileName(std::string_view name) {
    if (name.empty()) return "managed";
    std::string safe(name);
    for (char& character : safe) {
        if (std::string_view("\"*/:<>?\\|").find(character) != std::string_view::npos) character = '_';
    }
    return safe;
}

}  // namespace pivra
