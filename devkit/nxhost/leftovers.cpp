#include "leftovers.h"

#include "text.h"

#include <algorithm>
#include <regex>

namespace nxhost {

namespace fs = std::filesystem;

namespace {

// Whether an event must be there, and not the opposite.
bool isWanted(const Expectation& expectation) {
    using Kind = Expectation::Kind;
    return expectation.kind != Kind::absentBetween && (expectation.kind != Kind::counted || expectation.times > 0);
}

// A replay that says what temporary files it expects is held to that by its expectation.
bool namesTemporaryFiles(const Replay& replay) {
    return std::any_of(replay.expectations.begin(), replay.expectations.end(), [](const Expectation& expectation) {
        return isWanted(expectation) && expectation.pattern.contains("temporaryFiles");
    });
}

// Tokens, codes and states of sign-ins are runs of 64 hexadecimal digits, and nothing else in a log is.
bool holdsSecret(const std::string& text) {
    static const std::regex secret("[0-9a-f]{64}");
    return std::regex_search(text, secret);
}

void checkLogs(const Stage& stage, std::vector<std::string>& faults) {
    for (const auto& entry : fs::recursive_directory_iterator(stage.sandbox.root()))
        if (entry.path().extension() == ".log" && holdsSecret(readFile(entry.path())))
            faults.push_back("A secret of a sign-in stands in " + utf8(entry.path().filename()) + ".");
}

}  // namespace

std::vector<std::string> leftovers(const Replay& replay, const Stage& stage) {
    std::vector<std::string> faults;
    if (!namesTemporaryFiles(replay))
        for (const auto& name : stage.sandbox.temporaryFiles())
            faults.push_back("A temporary file was left behind: " + name);
    checkLogs(stage, faults);
    for (const auto& event : stage.transcript.events())
        if (event["event"] == "message-box" && holdsSecret(event["text"].get<std::string>()))
            faults.push_back("A secret of a sign-in stands in a message box.");
    return faults;
}

}  // namespace nxhost
