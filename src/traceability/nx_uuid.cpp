#include "traceability/nx_uuid.h"

#include <algorithm>
#include <array>
#include <random>

namespace pivra {

namespace {

constexpr std::size_t uuidLength = 36;

bool isHexDigit(char character) {
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f') ||
           (character >= 'A' && character <= 'F');
}

bool isDashPosition(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

std::array<unsigned char, 16> randomBytes() {
    std::random_device device;
    std::array<unsigned char, 16> bytes{};
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<unsigned char>(device() & 0xff); });
    return bytes;
}

}  // namespace

bool isNxUuidFormat(std::string_view text) {
    if (text.size() != uuidLength) return false;
    for (std::size_t position = 0; position < text.size(); ++position) {
        const char character = text[position];
        if (isDashPosition(position) ? character != '-' : !isHexDigit(character)) return false;
    }
    return true;
}

std::string generateTraceableId() {
    constexpr const char* digits = "0123456789abcdef";
    auto bytes = randomBytes();
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0f) | 0x40);  // version 4
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3f) | 0x80);  // the variant of RFC 4122
    std::string text;
    for (const unsigned char byte : bytes) {
        if (isDashPosition(text.size())) text += '-';
        text += digits[byte >> 4];
        text += digits[byte & 0x0f];
    }
    return text;
}

}  // namespace pivra
