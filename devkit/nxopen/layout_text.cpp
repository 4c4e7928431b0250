#include "layout_text.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace devkit {

namespace {

constexpr std::uintmax_t maxSize = 4 * 1024 * 1024;
constexpr int maxDepth = 200;

/// Where the tag that starts at `begin` ends: behind its ">", which may also stand inside quotes.
std::size_t endOfTag(const std::string& text, std::size_t begin) {
    char quote = '\0';
    for (std::size_t i = begin; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != '\0') {
            if (c == quote) quote = '\0';
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '>') {
            return i + 1;
        }
    }
    return text.size();
}

std::size_t endOf(const std::string& text, std::size_t begin, const std::string& mark) {
    const std::size_t found = text.find(mark, begin);
    return found == std::string::npos ? text.size() : found + mark.size();
}

int depthOf(const std::string& text) {
    int depth = 0;
    int deepest = 0;
    for (std::size_t at = text.find('<'); at != std::string::npos; at = text.find('<', at)) {
        if (text.compare(at, 4, "<!--") == 0) {
            at = endOf(text, at, "-->");
        } else if (text.compare(at, 9, "<![CDATA[") == 0) {
            at = endOf(text, at, "]]>");
        } else {
            const std::size_t end = endOfTag(text, at);
            const bool isElement = text[at + 1] != '?' && text[at + 1] != '!';
            const bool isEmpty = end - at > 2 && text[end - 2] == '/';
            if (text[at + 1] == '/') {
                --depth;
            } else if (isElement && !isEmpty) {
                deepest = std::max(deepest, ++depth);
            }
            at = end;
        }
    }
    return deepest;
}

}  // namespace

std::string readLayoutText(const std::filesystem::path& file) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error) throw std::runtime_error("the file cannot be read");
    if (size > maxSize) throw std::runtime_error("the file is too long for a layout");
    std::ifstream in(file, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (depthOf(text) > maxDepth) throw std::runtime_error("the elements are nested too deep");
    return text;
}

}  // namespace devkit
