#include "recovery.h"

#include "steps.h"

#include <algorithm>
#include <optional>
#include <set>

namespace nxhost {

namespace {

// A failed sign-in is told first, and the user signs in once more.
constexpr int maximalRuns = 4;
constexpr std::chrono::seconds patience{60};

class User {
 public:
    explicit User(ReplayContext& context) : context_(context) {}

    // Uses the open dialog; called whenever it is idle.
    Idle act() {
        const auto outcome = lookOfOutcome();
        if (outcome && !(*outcome)["show"] && std::chrono::steady_clock::now() < end_) return Idle::waiting;
        for (const char* button : {"signInButton", "uploadButton"})
            if (!outcome && press(button)) return Idle::stepped;
        perform(context_, "close");
        return Idle::stepped;
    }

    bool pressed(const std::string& button) const { return pressed_.contains(button); }

 private:
    // The group that the progress dialog shows at its end.
    std::optional<Event> lookOfOutcome() const {
        const auto* group = openDialog(context_).find("actionGroup");
        return group ? std::optional(lookOf(*group)) : std::nullopt;
    }

    bool press(const std::string& button) {
        const auto* block = openDialog(context_).find(button);
        if (!block || !lookOf(*block)["enable"] || !pressed_.insert(button).second) return false;
        perform(context_, {{"press", button}});
        return true;
    }

    ReplayContext& context_;
    std::set<std::string> pressed_;
    std::chrono::steady_clock::time_point end_ = std::chrono::steady_clock::now() + patience;
};

std::ptrdiff_t count(ReplayContext& context, const std::string& kind) {
    context.transcript.collectAll();
    const auto& events = context.transcript.events();
    return std::count_if(events.begin(), events.end(), [&](const Event& event) { return event["event"] == kind; });
}

}  // namespace

bool uploadOnceMore(ReplayContext& context) {
    context.screen.reopen();
    const auto uploaded = count(context, "upload");
    for (int run = 0; run < maximalRuns && count(context, "upload") == uploaded; ++run) {
        const auto opened = count(context, "opened");
        User user(context);
        context.screen.onIdle = [&user] { return user.act(); };
        runPlugin(context);
        // Without an address the next run tells why.
        if (user.pressed("signInButton") && count(context, "opened") > opened)
            perform(context, {{"answer", "sign-in"}});
    }
    context.screen.onIdle = nullptr;
    return count(context, "upload") > uploaded;
}

}  // namespace nxhost
