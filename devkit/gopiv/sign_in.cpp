#include "sign_in.h"

#include <algorithm>
#include <array>

#include "text.h"

namespace gopiv {

std::string SignIns::begin() {
    const std::lock_guard lock(mutex_);
    return flows_.emplace_back(Flow{randomSecret(), ""}).state;
}

bool SignIns::isWaiting(const std::string& state) {
    const std::lock_guard lock(mutex_);
    return find(state, Stage::waiting) != nullptr;
}

std::optional<std::string> SignIns::answer(const std::string& state, bool accepted) {
    const std::lock_guard lock(mutex_);
    Flow* const flow = find(state, Stage::waiting);
    if (flow == nullptr) return std::nullopt;
    flow->stage = Stage::answered;
    flow->code = accepted ? randomSecret() : "";
    return flow->code;
}

bool SignIns::finish(const std::string& state, const std::string& code) {
    const std::lock_guard lock(mutex_);
    Flow* const flow = find(state, Stage::answered);
    if (flow == nullptr || flow->code != code) return false;
    flow->stage = code.empty() ? Stage::refused : Stage::signedIn;
    changed_.notify_all();
    return true;
}

void SignIns::wait() {
    std::unique_lock lock(mutex_);
    if (flows_.empty()) throw Refusal("No sign-in has been started.");
    const std::size_t index = flows_.size() - 1;
    changed_.wait(lock, [&] { return closed_ || flows_[index].stage >= Stage::signedIn; });
    if (closed_) throw Refusal("The service client was closed before the sign-in ended.");
    if (flows_[index].stage == Stage::refused) throw Refusal("Sign-in was refused in the browser.");
    if (flows_[index].stage == Stage::completed) throw Refusal("This sign-in has been completed already.");
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
    for (const Flow& flow : flows_)
        flows.push_back({{"number", flows.size() + 1}, {"state", names[static_cast<std::size_t>(flow.stage)]}});
    return flows;
}

SignIns::Flow* SignIns::find(const std::string& state, Stage stage) {
    const auto flow = std::find_if(flows_.begin(), flows_.end(),
                                   [&](const Flow& known) { return known.state == state && known.stage == stage; });
    return flow == flows_.end() ? nullptr : &*flow;
}

}  // namespace gopiv
