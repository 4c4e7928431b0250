// Plays a replay: performs its steps, from inside the plug-in's modal dialogs while one is open, and judges the
// outcome.
#pragma once

#include "replay.h"
#include "stage.h"

#include <string>
#include <vector>

namespace nxhost {

/// Host's thread; one a process.
class Player {
 public:
    /// With `faulty` a call of the host is about to fail: steps that no longer fit then end the replay and are no
    /// fault, and what the replay expects is not asked.
    Player(const Replay& replay, Stage& stage, bool faulty);

    /// Performs all steps and ends the host's session. Returns the faults found: steps that could not be done, broken
    /// rules, expectations that are not met, temporary files and secrets left behind. Each is a readable sentence or
    /// more.
    std::vector<std::string> play();

 private:
    Idle idle();
    Idle await();
    void perform(const Step& step);
    void fail(const std::string& account);
    void noteViolations();
    void judge();

    const Replay& replay_;
    Stage& stage_;
    bool faulty_;
    std::size_t next_ = 0;
    bool failed_ = false;
    std::vector<std::string> faults_;
};

}  // namespace nxhost
