#include "expectations.h"

#include <algorithm>
#include <map>
#include <regex>
#include <stdexcept>

namespace nxhost {

namespace {

bool isRegex(const Event& pattern) {
    if (!pattern.is_string()) return false;
    const auto& text = pattern.get_ref<const std::string&>();
    return text.size() > 2 && text.front() == '/' && text.back() == '/';
}

const std::regex& regexOf(const Event& pattern) {
    static std::map<std::string, std::regex> made;
    const auto& text = pattern.get_ref<const std::string&>();
    return made.try_emplace(text, text.substr(1, text.size() - 2)).first->second;
}

bool listMatches(const Event& pattern, const Event& value) {
    if (pattern.empty()) return value.empty();
    auto at = value.begin();
    for (const auto& wanted : pattern) {
        at = std::find_if(at, value.end(), [&](const Event& element) { return matches(wanted, element); });
        if (at == value.end()) return false;
        ++at;
    }
    return true;
}

bool objectMatches(const Event& pattern, const Event& value) {
    for (const auto& [name, wanted] : pattern.items())
        if (!value.contains(name) || !matches(wanted, value[name])) return false;
    return true;
}

}  // namespace

bool matches(const Event& pattern, const Event& value) {
    if (isRegex(pattern)) return value.is_string() && std::regex_search(value.get<std::string>(), regexOf(pattern));
    if (pattern.is_object()) return value.is_object() && objectMatches(pattern, value);
    if (pattern.is_array()) return value.is_array() && listMatches(pattern, value);
    return pattern == value;
}

void checkPattern(const Event& pattern, const std::string& place) try {
    if (isRegex(pattern)) regexOf(pattern);
    if (pattern.is_structured())
        for (const auto& [name, part] : pattern.items())
            checkPattern(part, place + (pattern.is_array() ? "[" + name + "]" : "." + name));
} catch (const std::regex_error&) {
    throw std::runtime_error(place + ": " + pattern.dump() + " is no regular expression");
}

}  // namespace nxhost
