#include "http_text.h"

#include <algorithm>
#include <charconv>

namespace devkit {
namespace {

bool standsAsItIs(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("-._~").find(c) != std::string_view::npos;
}

std::optional<std::string> decodeFormText(std::string_view text) {
    std::string blanked(text);
    std::replace(blanked.begin(), blanked.end(), '+', ' ');
    return percentDecode(blanked);
}

}  // namespace

std::string percentEncode(std::string_view text) {
    static constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (standsAsItIs(c)) {
            encoded += c;
        } else {
            encoded += {'%', digits[byte >> 4U], digits[byte & 15U]};
        }
    }
    return encoded;
}

std::optional<std::string> percentDecode(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            decoded += text[i];
            continue;
        }
        const std::string_view digits = text.substr(i + 1, 2);
        unsigned char byte = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (error != std::errc{} || digits.size() != 2 || end != digits.data() + 2) {
            return std::nullopt;
        }
        decoded += static_cast<char>(byte);
        i += 2;
    }
    return decoded;
}

std::string encodeFields(const Fields& fields) {
    std::string text;
    for (const auto& [name, value] : fields) {
        text += text.empty() ? "" : "&";
        text += percentEncode(name) + "=" + percentEncode(value);
    }
    return text;
}

Fields parseFields(std::string_view text) {
    Fields fields;
    while (!text.empty()) {
        const std::string_view field = text.substr(0, text.find('&'));
        text.remove_prefix(std::min(text.size(), field.size() + 1));
        const std::size_t equals = std::min(field.find('='), field.size());
        const auto name = decodeFormText(field.substr(0, equals));
        const auto value = decodeFormText(field.substr(std::min(field.size(), equals + 1)));
        if (name && !name->empty() && value) {
            fields[*name] = *value;
        }
    }
    return fields;
}

std::string fieldValue(const Fields& fields, const std::string& name) {
    const auto field = fields.find(name);
    return field == fields.end() ? std::string() : field->second;
}

}  // namespace devkit
