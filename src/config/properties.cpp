#include "config/properties.h"

#include "logging/log.h"
#include "platform/files.h"
#include "platform/module.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace config {
namespace fs = std::filesystem;

namespace {

constexpr const char* propertiesFileName = "pivra.properties";

struct LoadedProperties {
    fs::path file;  // empty when none was read
    PropertiesTable values;
};

LoadedProperties& loadedProperties() {
    static LoadedProperties instance;
    return instance;
}

LoadedProperties readProperties(const fs::path& file) {
    const auto text = platform::readFile(file);
    return text ? LoadedProperties{file, parseProperties(*text)} : LoadedProperties{};
}

void parseLine(std::string_view rawLine, PropertiesTable& table) {
    const auto line = platform::Trim(rawLine);
    if (line.empty() || line.front() == '#' || line.front() == '!') return;
    const auto equals = line.find('=');
    if (equals == std::string::npos) return;
    auto key = platform::Trim(std::string_view(line).substr(0, equals));
    if (!key.empty()) table[std::move(key)] = platform::Trim(std::string_view(line).substr(equals + 1));
}

template <std::size_t Size>
bool isOneOf(const std::string& word, const std::array<std::string_view, Size>& words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

}  // namespace

fs::path PropertiesFilePath() {
    try {
        return platform::moduleDirectory() / propertiesFileName;
    } catch (const std::runtime_error&) {
        return propertiesFileName;
    }
}

bool LoadProperties() {
    loadedProperties() = readProperties(PropertiesFilePath());
    return !loadedProperties().file.empty();
}

std::string GetProperty(const std::string& key) {
    const auto& values = loadedProperties().values;
    const auto found = values.find(key);
    return found == values.end() ? std::string() : found->second;
}

bool ParseBooleanSetting(const std::string& key, const std::string& value, bool defaultValue) {
    constexpr std::array<std::string_view, 5> yes{"1", "true", "yes", "on", "enabled"};
    constexpr std::array<std::string_view, 5> no{"0", "false", "no", "off", "disabled"};
    const auto word = platform::toLower(platform::Trim(value));
    if (word.empty()) return defaultValue;
    if (isOneOf(word, yes)) return true;
    if (isOneOf(word, no)) return false;
    logging::LogWarning("pivra.properties: unrecognized value for " + key + ": \"" + value + "\"; using default " +
                        (defaultValue ? "true" : "false") + ".");
    return defaultValue;
}

PropertiesTable parseProperties(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    PropertiesTable table;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size() - 1);
        parseLine(text.substr(0, end + 1), table);
        text.remove_prefix(end + 1);
    }
    return table;
}

}  // namespace config
