// Plays a replay: performs its steps, from inside the plug-in's modal dialogs while one is open, and judges the
// outcome.
#pragma once

#include "replay.h"
#include "replay_context.h"

#include <string>
#include <vector>

namespace nxhost {

/// Host's thread; one a process.
class Player {
 public:
    /// With `faulty` a call of a neighbour is about to fail: steps that no longer fit then end the replay and are no
    /// fault, and its expectations are not checked. With `recover` a user then uploads once more, which must succeed.
    Player(const Replay& replay, ReplayContext& context, bool faulty, bool recover);

    /// Performs all steps and ends the host's session. Returns the faults found: steps that could not be done, broken
    /// rules, expectations that are not met, temporary files and secrets left behind. Each is a readable sentence or
    /// more.
    std::vector<std::string> play();
    /// Lets a person use the host instead, until they close its window. Steps and expectations are left out. Throws
    /// std::runtime_error where there are no windows.
    std::vector<std::string> useByHand();

 private:
    Idle idle();
    Idle pollWait();
    void performNext();
    void fail(const std::string& account);
    void noteViolations();
    void finish();
    void checkTemporaryFiles();
    void checkSecrets();

    const Replay& replay_;
    ReplayContext& context_;
    bool faulty_;
    bool recover_;
    std::size_t next_ = 0;
    bool failed_ = false;
    std::vector<std::string> faults_;
};

}  // namespace nxhost
