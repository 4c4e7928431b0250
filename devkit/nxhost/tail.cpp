#include "tail.h"

#include <fstream>
#include <iterator>

namespace nxhost {

std::vector<std::string> Tail::newLines() {
    std::error_code missing;
    const auto size = std::filesystem::file_size(file_, missing);
    if (missing || size < read_) read_ = 0;
    if (missing || size == read_) return {};
    std::ifstream in(file_, std::ios::binary);
    in.seekg(static_cast<std::streamoff>(read_));
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (auto end = bytes.find('\n'); end != std::string::npos; end = bytes.find('\n', start)) {
        const auto length = end > start && bytes[end - 1] == '\r' ? end - start - 1 : end - start;
        lines.push_back(bytes.substr(start, length));
        start = end + 1;
    }
    read_ += start;
    return lines;
}

}  // namespace nxhost
