// The record of a replay: what happened, one JSON object a line.
//
// Before each event the new lines of the plug-in's log, and then the new uploads, are written as events of their own,
// so that their order does not depend on when they were noticed. Host's thread only.
#pragma once

#include "scrub.h"
#include "tail.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <vector>

namespace nxhost {

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

    /// The events so far, scrubbed; what expectations are held against.
    const std::vector<Event>& events() const { return events_; }
    /// The uploads that wait for the next event.
    const std::vector<Event>& waitingUploads() const { return waitingUploads_; }

 private:
    void put(Event event);

    std::ostream& out_;
    std::filesystem::path sandbox_;
    Scrub scrub_;
    std::optional<Placeholders> placeholders_;
    std::map<std::filesystem::path, Tail> logs_;
    Tail uploads_;
    std::vector<Event> events_;
    std::vector<Event> waitingUploads_;
};

}  // namespace nxhost
