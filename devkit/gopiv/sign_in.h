// Sign-in through the browser, as an identity provider and its client would play it between them.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace gopiv {

/// What a sign-in page sends the browser back with. A refusal has no code.
struct SignInAnswer {
    std::string state;
    std::string code;
};

/// All sign-ins of a client. A sign-in ends in its own page alone: a newer one leaves it waiting. Any thread.
class SignIns {
 public:
    /// What the address of a new sign-in carries.
    struct Begun {
        std::string state;
        std::string challenge;
    };

    /// Begins a sign-in.
    Begun begin();

    /// The one-time ticket of the page for that sign-in; absent when there is none or it has been answered.
    std::optional<std::string> pageTicket(const std::string& state, const std::string& challenge) const;

    /// Takes the page's answer. Absent for an unknown or used ticket.
    std::optional<SignInAnswer> answer(const std::string& ticket, bool accepted);

    /// Ends the sign-in that has been given exactly this answer, once. Returns false for any other, and changes
    /// nothing.
    bool finish(const SignInAnswer& answer);

    /// Waits until the sign-in begun last at the time of the call has ended. Throws Refusal when there is none, when it
    /// was refused or has been waited for already, and when close() is called meanwhile.
    void wait();

    /// Breaks off all waiting, for good.
    void close();

    /// For each sign-in, oldest first: {"number", "state": "waiting", "answered", "signedIn", "refused" or
    /// "completed"}.
    nlohmann::json status() const;

 private:
    enum class Stage { waiting, answered, signedIn, refused, completed };

    struct Flow {
        std::string state;
        std::string challenge;
        std::string ticket;
        std::string code;
        Stage stage = Stage::waiting;
    };

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Flow> flows_;
    bool closed_ = false;
};

}  // namespace gopiv
