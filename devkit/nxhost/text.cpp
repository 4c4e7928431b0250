#include "text.h"

#include <iterator>
#include <stdexcept>

namespace nxhost {

const std::regex& uuidPattern() {
    static const std::regex pattern("[0-9a-fA-F]{8}-[0-9a-fA-F]{4}-[0-9a-fA-F]{4}-[0-9a-fA-F]{4}-[0-9a-fA-F]{12}");
    return pattern;
}

std::string readFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void writeFile(const std::filesystem::path& file, const std::string& bytes) {
    std::filesystem::create_directories(file.parent_path());
    if (!devkit::writeWholeFile(file, bytes))
        throw std::runtime_error("The file " + utf8(file) + " cannot be written.");
}

}  // namespace nxhost
