// What must not stand in a transcript, or differs from one run to the next.
#pragma once

#include <nlohmann/json.hpp>

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace nxhost {

using Event = nlohmann::ordered_json;

/// Names the sandbox "<sandbox>" and blanks secrets of addresses.
class Scrub {
 public:
    explicit Scrub(const std::filesystem::path& sandbox);

    /// `text` with the sandbox's path, in either slash style, replaced by "<sandbox>", forward slashes up to the end of
    /// that path, and the values of `state=`, `code_challenge=` and the like replaced by "***".
    std::string operator()(const std::string& text) const;

 private:
    std::string sandbox_;
};

/// Numbers what is random or belongs to one process: the same thing gets the same placeholder throughout.
class Placeholders {
 public:
    /// UUIDs that stand in `replay` are kept.
    explicit Placeholders(const std::string& replay);

    /// `text` with "<time>", "<port>", "<temp-1>", "<uuid-1>" for times, ports of the service, names of temporary
    /// folders and other UUIDs.
    std::string operator()(const std::string& text);

 private:
    std::string numbered(const std::string& kind, const std::string& value);

    std::set<std::string> kept_;
    std::map<std::string, std::string> names_;
    std::map<std::string, int> counts_;
};

/// Applies `change` to every text value in `event`.
template <typename Change>
void changeTexts(Event& event, Change& change) {
    if (event.is_string()) event = change(event.get_ref<const std::string&>());
    if (event.is_structured())
        for (auto& member : event) changeTexts(member, change);
}

}  // namespace nxhost
