#include <devkit/gate.h>
#include <NXOpen/NXException.hxx>

#include "uf_status.h"

namespace devkit {

namespace {

constexpr std::size_t maxRecorded = 1'000'000;

}  // namespace

Gate& Gate::instance() {
    static Gate gate;
    return gate;
}

void Gate::reset() {
    std::lock_guard lock(mutex_);
    hostThread_ = std::this_thread::get_id();
    calls_.clear();
    counts_.clear();
    total_ = 0;
    faults_.clear();
    violations_.clear();
    bracketDepth_ = 0;
    bracketRefused_ = false;
}

void Gate::addFault(const Fault& fault) {
    std::lock_guard lock(mutex_);
    faults_.push_back(fault);
}

void Gate::addViolation(const std::string& sentence) {
    std::lock_guard lock(mutex_);
    violations_.push_back(sentence);
}

const Fault* Gate::record(const char* name) {
    if (calls_.size() < maxRecorded) calls_.emplace_back(name);
    const std::size_t number = ++counts_[name];
    ++total_;
    for (const Fault& fault : faults_) {
        if (!fault.call.empty() && fault.call != name) continue;
        if (fault.number == 0 || fault.number == (fault.call.empty() ? total_ : number)) return &fault;
    }
    return nullptr;
}

bool Gate::onHostThread(const char* name) {
    if (std::this_thread::get_id() == hostThread_) return true;
    violations_.push_back(std::string(name) + " was called on a thread that is not the host's.");
    return false;
}

int Gate::enterUf(const char* name, bool needsBracket) {
    std::lock_guard lock(mutex_);
    const Fault* fault = record(name);
    if (!onHostThread(name)) return status::wrongThread;
    if (needsBracket && bracketDepth_ == 0) {
        violations_.push_back(std::string(name) + " was called outside UF_initialize and UF_terminate.");
        return status::notInitialized;
    }
    return fault != nullptr ? fault->status : 0;
}

bool Gate::enter(const char* name, bool returnsPointer) {
    std::lock_guard lock(mutex_);
    const Fault* fault = record(name);
    if (!onHostThread(name)) throw NXOpen::NXException::Create("The host was called on another thread than its own.");
    if (fault == nullptr) return true;
    if (fault->null && returnsPointer) return false;
    throw NXOpen::NXException::Create(fault->message.c_str());
}

void Gate::bracketAsked(int status) {
    std::lock_guard lock(mutex_);
    bracketRefused_ = status != 0;
    if (status == 0) ++bracketDepth_;
}

void Gate::bracketClosed() {
    std::lock_guard lock(mutex_);
    if (bracketDepth_ == 0) {
        violations_.push_back("UF_terminate was called without UF_initialize.");
    } else {
        --bracketDepth_;
    }
}

}  // namespace devkit
