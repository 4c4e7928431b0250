// The operations under way on a client.
#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

namespace gopiv {

/// Counts operations, and lets the client's end wait for them. Any thread.
class CallBook {
 public:
    /// Enters an operation and returns how many of its name there have been, this one included. Throws Refusal once the
    /// client is ending. Each enter() is followed by one leave().
    int enter(const std::string& operation);
    void leave(const std::string& operation);

    /// Sleeps. Throws Refusal when the client ends meanwhile.
    void pause(std::chrono::milliseconds time);

    /// Breaks off pauses, refuses further operations and returns when none is under way.
    void close();

    /// {"activeCalls", "completedCalls", "operations": {name: {"active", "completed"}}}
    nlohmann::json status() const;

 private:
    struct Count {
        int active = 0;
        int completed = 0;
    };

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::string, Count> counts_;
    int active_ = 0;
    bool closing_ = false;
};

}  // namespace gopiv
