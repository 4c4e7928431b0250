// What the checks of the host share.
//
// Checks run on the host's thread, with the C interface's bracket open. They write to no part and save none. They call
// the host through src/nx and src/platform where the plug-in does.
#pragma once

#include "nx/session.h"
#include "nx/text.h"
#include "platform/environment.h"
#include "platform/text_encoding.h"

#include <uf.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace contract {

/// Returns when the host does as assumed, and otherwise throws what was seen instead: what the host throws is a finding
/// too. Throws Needs when the session lacks what the check is tried on.
using Look = void (*)();

struct Needs {
    std::string what;
};

/// Adds a check; the row of its name in docs/real-host.md says what is assumed.
void check(const char* name, Look look);

void addHostChecks();
void addDialogChecks();
void addPartChecks();

/// Shows the dialog, which calls `tryChecks` when it is shown, pressed and closed. Nothing once it was pressed.
void showDialog(void (*tryChecks)());

inline void expect(bool asAssumed, const std::string& seen) {
    if (!asAssumed) throw std::runtime_error(seen);
}

/// Calls of the C interface and the statuses that they returned.
using Calls = std::vector<std::pair<const char*, int>>;

inline void succeed(const Calls& calls) {
    std::string failed;
    for (const auto& [call, status] : calls) {
        if (status != 0)
            failed += (failed.empty() ? "" : ", ") + std::string(call) + " gives " + std::to_string(status);
    }
    expect(failed.empty(), failed);
}

/// The user's folder for temporary files.
inline std::filesystem::path temporaryFolder() {
    return platform::userTempDirectory().value_or(".");
}

}  // namespace contract
