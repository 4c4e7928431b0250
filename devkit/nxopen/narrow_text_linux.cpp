#include "host_text.h"

namespace devkit {

std::string utf8FromNarrow(const std::string& text) {
    return text;
}

std::string narrowFromUtf8(const std::string& text) {
    return text;
}

}  // namespace devkit
