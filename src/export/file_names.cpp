#include "export/file_names.h"

#include "config/properties.h"

namespace pivra {

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
