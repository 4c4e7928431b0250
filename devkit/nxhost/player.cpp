#include "player.h"

#include "leftovers.h"

namespace nxhost {

Player::Player(const Replay& replay, Stage& stage, bool faulty) : replay_(replay), stage_(stage), faulty_(faulty) {
    stage_.screen.onIdle = [this] { return idle(); };
}

std::vector<std::string> Player::play() {
    while (!failed_ && (stage_.wait || next_ < replay_.steps.size()))
        if (idle() == Idle::waiting) stage_.screen.turn();
    if (!stage_.unloaded) unloadPlugin(stage_);
    noteViolations();
    judge();
    return faults_;
}

Idle Player::idle() {
    noteViolations();
    if (failed_) return Idle::ended;
    if (stage_.wait) return await();
    if (next_ < replay_.steps.size()) {
        perform(replay_.steps[next_++]);
    } else {
        fail("The steps are over, and the dialog " + openDialog(stage_).name + " is still open.");
    }
    return failed_ ? Idle::ended : Idle::stepped;
}

Idle Player::await() {
    if (stage_.wait->over(stage_)) {
        stage_.wait.reset();
        return Idle::stepped;
    }
    if (std::chrono::steady_clock::now() < stage_.wait->limit) return Idle::waiting;
    fail(replay_.steps[next_ - 1].place + ": waited in vain for " + stage_.wait->what);
    return Idle::ended;
}

void Player::perform(const Step& step) {
    // When a wait begins is a matter of time: what it waits for may have come about by then.
    if (!step.waits) {
        stage_.transcript.write({{"event", "step"}, {"step", step.source}});
        stage_.mark = stage_.transcript.events().size();
    }
    try {
        step.perform(stage_);
    } catch (const std::exception& error) {
        fail(step.place + ": " + error.what());
    }
}

// The steps that remain are left out, and whatever the plug-in still shows closes at once.
void Player::fail(const std::string& account) {
    if (failed_) return;
    failed_ = true;
    stage_.wait.reset();
    stage_.screen.shut();
    if (stage_.screen.dialog()) stage_.transcript.write(dialogEvent("look", *stage_.screen.dialog()));
    stage_.transcript.write({{"event", "error"}, {"text", account}});
    if (!faulty_) faults_.push_back(account);
}

void Player::noteViolations() {
    for (const auto& violation : nxhost::noteViolations(stage_)) faults_.push_back("Broken rule: " + violation);
}

void Player::judge() {
    for (const auto& fault : leftovers(replay_, stage_)) faults_.push_back(fault);
    if (failed_ || faulty_) return;
    const auto account = unmet(replay_.expectations, stage_.transcript.events());
    if (!account.empty()) faults_.push_back(account);
}

}  // namespace nxhost
