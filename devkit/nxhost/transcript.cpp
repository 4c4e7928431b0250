#include "transcript.h"

#include "text.h"

#include <regex>
#include <utility>

namespace nxhost {

namespace fs = std::filesystem;

namespace {

Event logEvent(const std::string& line) {
    static const std::regex form("\\[([^\\]]*)\\] \\[([A-Z]+)\\] ([^]*)");
    std::smatch part;
    if (!std::regex_match(line, part, form)) return {{"event", "error"}, {"text", "A log line has no head: " + line}};
    return {{"event", "log"}, {"level", part.str(2)}, {"text", part.str(3)}, {"time", part.str(1)}};
}

Event uploadEvent(const std::string& line) {
    Event event{{"event", "upload"}};
    event.update(Event::parse(line));
    return event;
}

}  // namespace

Transcript::Transcript(std::ostream& out, const fs::path& sandbox, std::optional<Placeholders> placeholders)
    : out_(out),
      sandbox_(sandbox),
      scrub_(sandbox),
      placeholders_(std::move(placeholders)),
      uploads_(sandbox / "service" / "uploads.jsonl") {}

void Transcript::write(const Event& event) {
    collectAll();
    put(event);
}

void Transcript::collectAll() {
    collect();
    for (auto& upload : std::exchange(waitingUploads_, {})) put(std::move(upload));
}

void Transcript::collect() {
    for (const auto& line : uploads_.newLines()) waitingUploads_.push_back(uploadEvent(line));
    std::error_code gone;  // folders come and go meanwhile
    for (auto entry = fs::recursive_directory_iterator(sandbox_, gone); entry != fs::end(entry);
         entry.increment(gone)) {
        if (entry->path().filename() != "pivra-integration.log") continue;
        const auto [log, isNew] = logs_.try_emplace(entry->path(), entry->path());
        if (isNew) put({{"event", "log-file"}, {"file", utf8(entry->path())}});
    }
    for (auto& [file, log] : logs_)
        for (const auto& line : log.newLines()) put(logEvent(line));
}

void Transcript::put(Event event) {
    changeTexts(event, scrub_);
    events_.push_back(event);
    if (placeholders_) changeTexts(event, *placeholders_);
    out_ << event.dump(-1, ' ', false, Event::error_handler_t::replace) << '\n' << std::flush;
    if (onEvent) onEvent(events_.back());
}

}  // namespace nxhost
