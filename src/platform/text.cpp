#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace platform {
namespace {

bool beginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

}  // namespace

std::string Trim(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

std::string oneLine(std::string text) {
    // Without a branch for each byte: every line of the log comes through here.
    const auto visible = [](unsigned char c) {
        const bool isControl = ((c < ' ') & (c != '\t')) | (c == 0x7F);
        return static_cast<char>(isControl ? ' ' : c);
    };
    std::transform(text.begin(), text.end(), text.begin(), visible);
    return text;
}

std::string toLower(std::string_view text) {
    std::string lower(text);
    for (char& letter : lower) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return lower;
}

// Not by std::to_chars, whose tables for numbers of any size would be a tenth of the plug-in's file.
std::string decimalText(double value, int decimals) {
    std::array<char, 400> digits{};
    std::snprintf(digits.data(), digits.size(), "%.*f", decimals, value);
    std::string text = digits.data();
    if (decimals > 0) {
        const auto end = text.find_first_not_of("-0123456789");
        text.replace(end, text.size() - static_cast<std::size_t>(decimals) - end, ".");
    }
    return text;
}

std::size_t characterCount(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
    const auto end =
        std::find_if(text.begin(), text.end(), [&](char byte) { return beginsCharacter(byte) && count-- == 0; });
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

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
    return toLower(fileExtension(path)) == extension;
}

std::string sanitizeFileName(std::string_view name) {
    if (name.empty()) return "managed";
    std::string safe(name);
    for (char& character : safe) {
        if (std::string_view("\"*/:<>?\\|").find(character) != std::string_view::npos) character = '_';
    }
    return safe;
}

}  // namespace platform
