// A check of one thing that the plug-in takes for granted of its host.
//
// Checks run on the host's thread. They write to no part and save none. They call the host through src/nx and
// src/platform where the plug-in does.
#pragma once

#include <nx/uf_session.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace contract {

struct Check {
    /// The row of docs/real-host.md that says what is assumed.
    const char* name;
    /// Returns what was seen instead (UTF-8), empty when the host does as assumed. Throws Needs, and whatever the host
    /// throws, which is a finding too.
    std::string (*look)();
};

/// Thrown when the session lacks what a check is tried on.
struct Needs {
    std::string what;
};

std::vector<Check> hostChecks();
std::vector<Check> dialogChecks();
std::vector<Check> partChecks();
std::vector<Check> assemblyChecks();
std::vector<Check> drawingChecks();
std::vector<Check> managedChecks();

/// The next dialog check shows the dialog again.
void forgetDialog();

inline std::string unless(bool asAssumed, const std::string& seen) {
    return asAssumed ? std::string() : seen;
}

/// What was seen of calls that should return 0.
class Statuses {
 public:
    void note(const std::string& call, int status) {
        if (status != 0) seen_ += (seen_.empty() ? "" : ", ") + call + " gives status " + std::to_string(status);
    }
    const std::string& seen() const { return seen_; }

 private:
    std::string seen_;
};

/// For a call whose failure leaves nothing to look at.
inline void require(const std::string& call, int status) {
    Statuses statuses;
    statuses.note(call, status);
    if (status != 0) throw std::runtime_error(statuses.seen());
}

/// The bracket of the C interface, which must open.
class Bracket {
 public:
    Bracket() { require("UF_initialize", session_.status()); }

 private:
    nx::UfSession session_;
};

}  // namespace contract
