#include "calls.h"

#include "text.h"

namespace gopiv {
namespace {

constexpr const char* clientIsEnding = "The service client is being closed.";

}

int CallBook::enter(const std::string& operation) {
    const std::lock_guard lock(mutex_);
    if (closing_) {
        throw Refusal(clientIsEnding);
    }
    Count& count = counts_[operation];
    ++active_;
    return ++count.active + count.completed;
}

void CallBook::leave(const std::string& operation) {
    const std::lock_guard lock(mutex_);
    Count& count = counts_[operation];
    --active_;
    --count.active;
    ++count.completed;
    changed_.notify_all();
}

void CallBook::pause(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    if (changed_.wait_for(lock, time, [this] { return closing_; })) {
        throw Refusal(clientIsEnding);
    }
}

void CallBook::close() {
    std::unique_lock lock(mutex_);
    closing_ = true;
    changed_.notify_all();
    changed_.wait(lock, [this] { return active_ == 0; });
}

nlohmann::json CallBook::status() const {
    const std::lock_guard lock(mutex_);
    int completed = 0;
    nlohmann::json operations = nlohmann::json::object();
    for (const auto& [name, count] : counts_) {
        completed += count.completed;
        operations[name] = {{"active", count.active}, {"completed", count.completed}};
    }
    return {{"activeCalls", active_}, {"completedCalls", completed}, {"operations", operations}};
}

}  // namespace gopiv
