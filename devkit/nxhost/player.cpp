#include "player.h"

#include "expectations.h"
#include "recovery.h"
#include "steps.h"
#include "text.h"

#include <devkit/call_interceptor.h>
#include <devkit/session.h>
#include <http_client.h>

#include <regex>
#include <set>

namespace nxhost {

namespace fs = std::filesystem;

namespace {

std::string placeOf(std::size_t step) {
    return "replay.steps[" + std::to_string(step) + "]: ";
}

// Tokens, codes and states of sign-ins begin with a mark, and so are found in part as well. In a log any run of 64
// hexadecimal digits is taken for one.
bool holdsSecret(const std::string& bytes, bool isLog) {
    static const std::regex digits("[0-9a-f]{64}");
    return bytes.find(devkit::secretMark) != std::string::npos || (isLog && std::regex_search(bytes, digits));
}

// A step is the replay's own. Secrets of addresses are hidden as "***", and only these other events have addresses.
bool holdsSecret(const Event& event) {
    static const std::set<std::string> hiding{"opened", "page", "browsed", "log"};
    if (event["event"] == "step") return false;
    const auto text = event.dump(-1, ' ', false, Event::error_handler_t::replace);
    return holdsSecret(text, false) || (!hiding.contains(event["event"]) && text.find("=***") != std::string::npos);
}

}  // namespace

Player::Player(const Replay& replay, ReplayContext& context, bool faulty, bool recover)
    : replay_(replay), context_(context), faulty_(faulty), recover_(recover) {}

std::vector<std::string> Player::play() {
    context_.screen.onIdle = [this] { return idle(); };
    while (!failed_ && (context_.wait || next_ < replay_.steps.size()))
        if (idle() == Idle::waiting) context_.screen.advance();
    context_.calls = devkit::callCounts();
    if (recover_ && !context_.unloaded && !uploadOnceMore(context_)) faults_.push_back("The next run does not upload.");
    if (!context_.unloaded) unloadPlugin(context_);
    finish();
    if (failed_ || faulty_) return faults_;
    const auto account = unmet(replay_.expect, context_.transcript.events());
    if (!account.empty()) faults_.push_back(account);
    return faults_;
}

std::vector<std::string> Player::useByHand() {
    context_.screen.useByHand(replay_.title, context_);
    unloadPlugin(context_);
    nxhost::noteViolations(context_);
    for (const auto& violation : devkit::CallInterceptor::instance().violations())
        faults_.push_back("Broken rule: " + violation);
    finish();
    return faults_;
}

Idle Player::idle() {
    noteViolations();
    if (failed_) return Idle::ended;
    if (context_.wait) return pollWait();
    if (next_ < replay_.steps.size())
        performNext();
    else
        fail("The steps are over, and the dialog " + openDialog(context_).name + " is still open.");
    return failed_ ? Idle::ended : Idle::stepped;
}

Idle Player::pollWait() {
    if (context_.wait->over(context_)) {
        context_.wait.reset();
        return Idle::stepped;
    }
    if (std::chrono::steady_clock::now() < context_.wait->limit) return Idle::waiting;
    fail(placeOf(next_ - 1) + "waited in vain for " + context_.wait->what);
    return Idle::ended;
}

void Player::performNext() {
    const auto index = next_++;
    const auto& step = replay_.steps[index];
    // When a wait begins depends on time: what it waits for may have happened by then.
    if (!isWait(step)) {
        context_.transcript.write({{"event", "step"}, {"step", Event(step)}});
        context_.mark = context_.transcript.events().size();
    }
    try {
        perform(context_, step);
    } catch (const std::exception& error) {
        fail(placeOf(index) + error.what());
    }
}

// The remaining steps are left out, and whatever the plug-in still shows closes at once.
void Player::fail(const std::string& account) {
    if (failed_) return;
    failed_ = true;
    context_.wait.reset();
    context_.screen.shut();
    if (context_.screen.dialog()) context_.transcript.write(dialogEvent("look", *context_.screen.dialog()));
    context_.transcript.write({{"event", "error"}, {"text", account}});
    if (!faulty_) faults_.push_back(account);
}

void Player::noteViolations() {
    for (const auto& violation : nxhost::noteViolations(context_)) faults_.push_back("Broken rule: " + violation);
}

void Player::finish() {
    noteViolations();
    checkTemporaryFiles();
    checkSecrets();
}

void Player::checkTemporaryFiles() {
    if (nameTemporaryFiles(replay_.expect)) return;
    for (const auto& name : context_.sandbox.temporaryFiles())
        faults_.push_back("A temporary file was left behind: " + name);
}

void Player::checkSecrets() {
    for (const auto& entry : fs::recursive_directory_iterator(context_.sandbox.root())) {
        const auto& file = entry.path();
        const auto kind = file.extension();
        if (!entry.is_regular_file() || kind == ".dll" || kind == ".so") continue;  // libraries are the host's copies
        if (holdsSecret(readFile(file), kind == ".log"))
            faults_.push_back("A secret of a sign-in stands in " + utf8(file.filename()) + ".");
    }
    for (const auto& event : context_.transcript.events())
        if (holdsSecret(event))
            faults_.push_back("A secret of a sign-in stands in an event " + event["event"].get<std::string>() + ".");
}

}  // namespace nxhost
