// Sign-in through the browser, as an identity provider and its client would perform it between them.
#pragma once

#include <condition_variable>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace gopiv {

/// All sign-ins of a client. A sign-in ends through its own page alone: a newer one leaves it waiting. Any thread.
class SignIns {
 public:
    /// Begins a sign-in and returns its state, which its page carries.
    std::string begin();

    /// Whether the page of that state has yet to be answered.
    bool isWaiting(const std::string& state);

    /// Takes the answer of the page of that state, and returns the code that the page sends the browser back with: none
    /// for a refusal. Absent when no such page is waiting.
    std::optional<std::string> answer(const std::string& state, bool accepted);

    /// Ends the answered sign-in of that state and code, once. Returns false, and changes nothing, for any other.
    bool finish(const std::string& state, const std::string& code);

    /// Waits until the sign-in that was begun last at the time of the call has ended. Throws Refusal when there is
    /// none, when it was refused or has been waited for already, and when close() is called meanwhile.
    void wait();

    /// Ends all waiting, for good.
    void close();

    /// For each sign-in, oldest first: {"number", "state": "waiting", "answered", "signedIn", "refused" or
    /// "completed"}.
    nlohmann::json status() const;

 private:
    enum class Stage { waiting, answered, signedIn, refused, completed };

    struct Flow {
        std::string state;
        std::string code;
        Stage stage = Stage::waiting;
    };

    /// The flow of that state when it is at `stage`, otherwise null.
    Flow* find(const std::string& state, Stage stage);

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Flow> flows_;
    bool closed_ = false;
};

}  // namespace gopiv
