#include "browser.h"

#include "steps.h"

#include <http_client.h>

#include <chrono>
#include <regex>
#include <thread>

namespace nxhost {

namespace {

using namespace std::chrono_literals;

constexpr auto idleTime = 150ms;
constexpr auto idleLimit = 15s;

std::string baseOf(const std::string& address) {
    return address.substr(0, address.find('/', address.find("//") + 2));
}

// Whether the service has nothing under way but sign-ins whose pages nobody has answered.
bool isIdle(const Json& status) {
    int unanswered = 0;
    for (const auto& flow : status.at("flows")) {
        const auto& state = flow.at("state");
        if (state == "answered" || state == "signedIn") return false;
        if (state == "waiting") ++unanswered;
    }
    const auto completing = status.at("operations").value("complete", Json{{"active", 0}}).at("active");
    return completing <= unanswered && status.at("activeCalls") == completing;
}

// A sign-in that has been answered goes on: its worker asks for the user and hands in the result.
void waitUntilIdle(const std::string& base) {
    const auto limit = std::chrono::steady_clock::now() + idleLimit;
    auto busy = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - busy < idleTime) {
        if (!isIdle(Json::parse(devkit::httpGet(base + "/dev/status").body))) busy = std::chrono::steady_clock::now();
        if (busy > limit) throw StepError("The service is still at work after the sign-in.");
        std::this_thread::sleep_for(10ms);
    }
}

// What a page shows: its text without tags, each run of white space as one blank.
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
    return present_ ? 33 : 31;
}

const std::string& Browser::address(int opened) const {
    if (opened_.empty()) throw StepError("No address has been opened.");
    if (opened == 0) return opened_.back();
    if (opened < 0 || opened > static_cast<int>(opened_.size()))
        throw StepError("There is no opened address " + std::to_string(opened) + ".");
    return opened_[static_cast<std::size_t>(opened) - 1];
}

void Browser::answer(const std::string& address, bool accept) {
    devkit::answerSignIn(address, accept);
    waitUntilIdle(baseOf(address));
}

void Browser::load(const std::string& address) {
    const auto page = devkit::httpGet(address);
    transcript_.write({{"event", "page"},
                       {"address", address},
                       {"status", page.status},
                       {"title", titleOf(page.body)},
                       {"text", textOf(page.body)}});
}

}  // namespace nxhost
