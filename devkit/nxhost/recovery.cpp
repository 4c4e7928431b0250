#include "recovery.h"

#include "steps.h"

#include <algorithm>
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
        if (isUploading() && std::chrono::steady_clock::now() < end_) return Idle::waiting;
        // What cannot be uploaded may need another sign-in.
        for (const char* button : {"signInButton", "uploadButton", "signOutButton"})
            if (press(button)) return Idle::stepped;
        perform(context_, "close");
        return Idle::stepped;
    }

    bool pressed(const std::string& button) const { return pressed_.contains(button); }

 private:
    // At its end the progress dialog shows its actions after a success, and no spinner after a failure.
    bool isUploading() const {
        const auto* actions = openDialog(context_).find("actionGroup");
        const auto* spinner = openDialog(context_).find("spinner");
        return actions && spinner && !lookOf(*actions)["show"] && lookOf(*spinner)["show"];
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
