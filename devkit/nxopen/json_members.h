// Reads the members of a JSON object strictly: a wrong type and a member that nobody asked for are errors that name it.
#pragma once

#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

namespace devkit {

/// Failures throw std::runtime_error: "session.parts[2].modified: expected true or false".
class JsonMembers {
 public:
    /// The members of `value`, which must be an object; `where` names it in failures.
    JsonMembers(const nlohmann::json& value, std::string where);

    /// The member, or null when it is absent.
    const nlohmann::json* find(const std::string& name);

    // Each leaves `target` as it is when the member is absent.
    void read(const std::string& name, bool& target);
    void read(const std::string& name, int& target);
    void read(const std::string& name, std::uint64_t& target);
    void read(const std::string& name, std::string& target);
    void read(const std::string& name, std::vector<std::string>& target);
    void read(const std::string& name, std::map<std::string, std::string>& target);

    /// Refuses members that were not asked for.
    void finish() const;

    std::string pathOf(const std::string& name) const { return where_ + "." + name; }
    [[noreturn]] void fail(const std::string& name, const std::string& reason) const;

 private:
    template <class T>
    void assign(const std::string& name, bool (*fits)(const nlohmann::json&), const char* expected, T& target);

    const nlohmann::json& value_;
    std::string where_;
    std::set<std::string> known_;
};

}  // namespace devkit
