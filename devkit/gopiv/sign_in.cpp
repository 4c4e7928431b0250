#include "sign_in.h"

#include <algorithm>
#include <array>

#include "sha256.h"
#include "text.h"

namespace gopiv {

SignIns::Begun SignIns::begin() {
    Sha256 challenge;
    challenge.update(randomSecret());
    const std::lock_guard lock(mutex_);
    flows_.push_back({randomSecret(), challenge.finish(), randomSecret(), "", Stage::waiting});
    return {flows_.back().state, flows_.back().challenge};
}

std::optional<std::string> SignIns::pageTicket(const std::string& state, const std::string& challenge) const {
    const std::lock_guard lock(mutex_);
    const auto flow = std::find_if(flows_.begin(), flows_.end(), [&](const Flow& candidate) {
        return candidate.stage == Stage::waiting && candidate.state == state && candidate.challenge == challenge;
    });
    return flow == flows_.end() ? std::nullopt : std::optional(flow->ticket);
}

std::optional<SignInAnswer> SignIns::answer(const std::string& ticket, bool accepted) {
    const std::lock_guard lock(mutex_);
    const auto flow = std::find_if(flows_.begin(), flows_.end(), [&](const Flow& candidate) {
        return candidate.stage == Stage::waiting && candidate.ticket == ticket;
    });
    if (flow == flows_.end()) {
        return std::nullopt;
    }
    flow->stage = Stage::answered;
    flow->code = accepted ? randomSecret() : "";
    return SignInAnswer{flow->state, flow->code};
}

bool SignIns::finish(const SignInAnswer& answer) {
    const std::lock_guard lock(mutex_);
    const auto flow = std::find_if(flows_.begin(), flows_.end(), [&](const Flow& candidate) {
        return candidate.stage == Stage::answered && candidate.state == answer.state && candidate.code == answer.code;
    });
    if (flow == flows_.end()) {
        return false;
    }
    flow->stage = answer.code.empty() ? Stage::refused : Stage::signedIn;
    changed_.notify_all();
    return true;
}

void SignIns::wait() {
    std::unique_lock lock(mutex_);
    if (flows_.empty()) {
        throw Refusal("No sign-in has been started.");
    }
    const std::size_t index = flows_.size() - 1;
    changed_.wait(lock, [&] { return closed_ || flows_[index].stage >= Stage::signedIn; });
    if (closed_) {
        throw Refusal("The service client was closed before the sign-in ended.");
    }
    if (flows_[index].stage == Stage::refused) {
        throw Refusal("Sign-in was refused in the browser.");
    }
    if (flows_[index].stage == Stage::completed) {
        throw Refusal("This sign-in has been completed already.");
    }
    flows_[index].stage = Stage::completed;
}

void SignIns::close() {
    const std::lock_guard lock(mutex_);
    closed_ = true;
    changed_.notify_all();
}

nlohmann::json SignIns::status() const {
    static constexpr std::array<const char*, 5> names{"waiting", "answered", "signedIn", "refused", "completed"};
    const std::lock_guard lock(mutex_);
    nlohmann::json flows = nlohmann::json::array();
    for (const Flow& flow : flows_) {
        flows.push_back({{"number", flows.size() + 1}, {"state", names[static_cast<std::size_t>(flow.stage)]}});
    }
    return flows;
}

}  // namespace gopiv
