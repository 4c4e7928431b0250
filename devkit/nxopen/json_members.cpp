#include "json_members.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace devkit {

namespace {

bool allTexts(const nlohmann::json& values) {
    return std::all_of(values.begin(), values.end(), [](const nlohmann::json& value) { return value.is_string(); });
}

bool isInt(const nlohmann::json& value) {
    constexpr auto least = std::numeric_limits<int>::min();
    constexpr auto most = std::numeric_limits<int>::max();
    return value.is_number_integer() && value >= least && value <= most;
}

}  // namespace

JsonMembers::JsonMembers(const nlohmann::json& value, std::string where) : value_(value), where_(std::move(where)) {
    if (!value.is_object()) throw std::runtime_error(where_ + ": expected an object");
}

const nlohmann::json* JsonMembers::find(const std::string& name) {
    known_.insert(name);
    const auto found = value_.find(name);
    return found == value_.end() ? nullptr : &*found;
}

void JsonMembers::fail(const std::string& name, const std::string& reason) const {
    throw std::runtime_error(pathOf(name) + ": " + reason);
}

template <class T>
void JsonMembers::assign(const std::string& name, bool (*fits)(const nlohmann::json&), const char* expected,
                         T& target) {
    const nlohmann::json* value = find(name);
    if (value == nullptr) return;
    if (!fits(*value)) fail(name, std::string("expected ") + expected);
    target = value->get<T>();
}

void JsonMembers::read(const std::string& name, bool& target) {
    assign(
        name, [](const nlohmann::json& value) { return value.is_boolean(); }, "true or false", target);
}

void JsonMembers::read(const std::string& name, int& target) {
    assign(name, isInt, "a whole number", target);
}

void JsonMembers::read(const std::string& name, std::uint64_t& target) {
    assign(
        name, [](const nlohmann::json& value) { return value.is_number_unsigned(); }, "a whole number from 0", target);
}

void JsonMembers::read(const std::string& name, std::string& target) {
    assign(
        name, [](const nlohmann::json& value) { return value.is_string(); }, "a text", target);
}

void JsonMembers::read(const std::string& name, std::vector<std::string>& target) {
    assign(
        name, [](const nlohmann::json& value) { return value.is_array() && allTexts(value); }, "a list of texts",
        target);
}

void JsonMembers::read(const std::string& name, std::map<std::string, std::string>& target) {
    assign(
        name, [](const nlohmann::json& value) { return value.is_object() && allTexts(value); }, "an object of texts",
        target);
}

void JsonMembers::finish() const {
    for (const auto& member : value_.items()) {
        if (known_.count(member.key()) == 0) fail(member.key(), "unknown member");
    }
}

}  // namespace devkit
