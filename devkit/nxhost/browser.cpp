#include "browser.h"

#include "system.h"

#include <http_client.h>

#include <algorithm>
#include <chrono>
#include <regex>
#include <stdexcept>
#include <thread>
#include <utility>

namespace nxhost {

namespace {

using namespace std::chrono_literals;

constexpr auto quietTime = 150ms;
// Polls in a row: on a busy computer the service's threads and the worker run between two of them.
constexpr int quietPolls = 15;
constexpr auto unclaimedTime = 2s;
constexpr auto quietLimit = 60s;

std::string baseOf(const std::string& address) {
    return address.substr(0, address.find('/', address.find("//") + 2));
}

int flowsIn(const Json& status, const std::string& state) {
    const auto& flows = status.at("flows");
    return static_cast<int>(
        std::count_if(flows.begin(), flows.end(), [&](const Json& flow) { return flow.at("state") == state; }));
}

// Whether anything is under way, except sign-ins that wait for an answer on their page.
bool isBusy(const Json& status) {
    const auto completing = status.at("operations").value("complete", Json{{"active", 0}}).at("active");
    return flowsIn(status, "answered") > 0 || completing > flowsIn(status, "waiting") ||
           status.at("activeCalls") != completing;
}

// After an answer the sign-in's worker fetches the result, asks for the user and commits. When nothing is fetched, the
// worker is late, or there is none because the sign-in was abandoned.
void waitUntilQuiet(const std::string& base) {
    const auto start = std::chrono::steady_clock::now();
    auto busy = start;
    int polls = 0;
    while (true) {
        const auto status = Json::parse(devkit::httpGet(base + "/dev/status").body);
        const auto now = std::chrono::steady_clock::now();
        polls = isBusy(status) ? 0 : polls + 1;
        if (polls == 0) busy = now;
        const auto quiet = flowsIn(status, "signedIn") > 0 ? unclaimedTime : quietTime;
        if (polls >= quietPolls && now - busy >= quiet) return;
        if (now - start > quietLimit) throw std::runtime_error("The service is still at work after the sign-in.");
        std::this_thread::sleep_for(10ms);
    }
}

// The text of a page without tags, each run of white space as one blank.
std::string textOf(const std::string& page) {
    static const std::regex hidden("<(style|script|title)[^>]*>[^]*?</\\1>|<[^>]*>");
    static const std::regex space("\\s+");
    return std::regex_replace(std::regex_replace(page, hidden, " "), space, " ");
}

std::string titleOf(const std::string& page) {
    static const std::regex title("<title>([^<]*)</title>");
    std::smatch found;
    return std::regex_search(page, found, title) ? found.str(1) : "";
}

}  // namespace

int Browser::open(const std::string& address) {
    opened_.push_back(address);
    transcript_.write({{"event", "opened"}, {"address", address}});
    if (!present_) return 31;
    if (!program_.empty())
        visits_.push_back({address, std::async(std::launch::async, runProgram, program_, std::vector{address})});
    return 33;
}

const std::string& Browser::address(int opened) const {
    if (opened_.empty()) throw std::runtime_error("No address has been opened.");
    if (opened == 0) return opened_.back();
    if (opened < 0 || opened > static_cast<int>(opened_.size()))
        throw std::runtime_error("There is no opened address " + std::to_string(opened) + ".");
    return opened_[static_cast<std::size_t>(opened) - 1];
}

void Browser::answer(const std::string& address, bool accept) {
    devkit::answerSignIn(address, accept);
    waitUntilQuiet(baseOf(address));
}

void Browser::load(const std::string& address) {
    const auto page = devkit::httpGet(address);
    transcript_.write({{"event", "page"},
                       {"address", address},
                       {"status", page.status},
                       {"title", titleOf(page.body)},
                       {"text", textOf(page.body)}});
}

void Browser::finish() {
    if (visits_.empty()) throw std::runtime_error("No address has been given to a program.");
    for (auto& visit : std::exchange(visits_, {})) {
        const int status = visit.status.get();
        transcript_.write({{"event", "browsed"}, {"address", visit.address}, {"status", status}});
        if (status != 0)
            throw std::runtime_error("The browser's program ended with status " + std::to_string(status) + ".");
        waitUntilQuiet(baseOf(visit.address));
    }
}

}  // namespace nxhost
