// The record of a replay: what happened, one JSON object a line.
//
// Before each event the new lines of the plug-in's log, and then the new uploads, are written as events of their own,
// so that their order does not depend on when they were noticed. Host's thread only.
#pragma once

#include "json.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace nxhost {

/// Names the sandbox "<sandbox>" and hides the secrets of addresses.
class Redactor {
 public:
    explicit Redactor(const std::filesystem::path& sandbox);

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

class Transcript {
 public:
    /// Follows the logs and the uploads under `sandbox`. `placeholders`, when given, apply to what is written, not to
    /// what is kept.
    Transcript(std::ostream& out, const std::filesystem::path& sandbox, std::optional<Placeholders> placeholders);

    void write(const Event& event);
    /// Notes new log lines. New uploads wait for the next event: the lines that follow them in the log come first,
    /// whenever they are noticed.
    void collect();
    /// Notes new log lines and uploads.
    void collectAll();
    /// Told of each event once it is written, as it is kept.
    std::function<void(const Event&)> onEvent;

    /// The events so far, redacted; expectations are checked against them.
    const std::vector<Event>& events() const { return events_; }
    /// The uploads that wait for the next event.
    const std::vector<Event>& waitingUploads() const { return waitingUploads_; }

 private:
    void put(Event event);

    std::ostream& out_;
    std::filesystem::path sandbox_;
    Redactor redact_;
    std::optional<Placeholders> placeholders_;
    std::map<std::filesystem::path, std::uintmax_t> logs_;  ///< with the number of bytes read
    std::uintmax_t uploadsRead_ = 0;
    std::vector<Event> events_;
    std::vector<Event> waitingUploads_;
};

}  // namespace nxhost
