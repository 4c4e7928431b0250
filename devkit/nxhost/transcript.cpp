#include "transcript.h"

#include "text.h"

#include <fstream>
#include <regex>
#include <utility>

namespace nxhost {

namespace fs = std::filesystem;

namespace {

// The whole lines from byte `read` on, without their ends (LF, CR LF). A file that has become shorter is read from its
// beginning.
std::vector<std::string> newLines(const fs::path& file, std::uintmax_t& read) {
    std::error_code missing;
    const auto size = fs::file_size(file, missing);
    if (missing || size < read) read = 0;
    if (missing || size == read) return {};
    std::ifstream in(file, std::ios::binary);
    in.seekg(static_cast<std::streamoff>(read));
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line) && !in.eof();) {
        read += line.size() + 1;
        if (line.ends_with('\r')) line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

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
    : out_(out), sandbox_(sandbox), redact_(sandbox), placeholders_(std::move(placeholders)) {}

void Transcript::write(const Event& event) {
    collectAll();
    put(event);
}

void Transcript::collectAll() {
    collect();
    for (auto& upload : std::exchange(waitingUploads_, {})) put(std::move(upload));
}

void Transcript::collect() {
    for (const auto& line : newLines(sandbox_ / "service" / "uploads.jsonl", uploadsRead_))
        waitingUploads_.push_back(uploadEvent(line));
    std::error_code gone;  // folders come and go meanwhile
    for (auto entry = fs::recursive_directory_iterator(sandbox_, gone); entry != fs::end(entry);
         entry.increment(gone)) {
        if (entry->path().filename() != "pivra-integration.log") continue;
        const auto [log, isNew] = logs_.emplace(entry->path(), 0);
        if (isNew) put({{"event", "log-file"}, {"file", utf8(entry->path())}});
    }
    for (auto& [file, read] : logs_)
        for (const auto& line : newLines(file, read)) put(logEvent(line));
}

void Transcript::put(Event event) {
    changeTexts(event, redact_);
    events_.push_back(event);
    if (placeholders_) changeTexts(event, *placeholders_);
    out_ << event.dump(-1, ' ', false, Event::error_handler_t::replace) << '\n' << std::flush;
    if (onEvent) onEvent(events_.back());
}

}  // namespace nxhost
