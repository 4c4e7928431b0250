#include "calls.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace devkit {

namespace {

struct UnknownException {};

}  // namespace

CallInterceptor& CallInterceptor::instance() {
    // Never destroyed: threads still call while the process exits.
    static CallInterceptor& interceptor = *new CallInterceptor;
    return interceptor;
}

void CallInterceptor::reset() {
    std::lock_guard lock(mutex_);
    hostThread_ = std::this_thread::get_id();
    calls_.clear();
    counts_.clear();
    countsByLiteral_.clear();
    faults_.clear();
    violations_.clear();
    dialogTimes_.clear();
    bracketDepth_ = 0;
    bracketRefused_ = false;
    emptied_ = false;
}

void CallInterceptor::addFault(const Fault& fault) {
    std::lock_guard lock(mutex_);
    faults_.push_back(fault);
}

void CallInterceptor::addViolation(const std::string& sentence) {
    std::lock_guard lock(mutex_);
    violations_.push_back(sentence);
}

bool CallInterceptor::setPluginAtWork(bool isAtWork) {
    if (std::this_thread::get_id() != hostThread_) return false;
    const auto now = Clock::now();
    if (isPluginAtWork_) own_ += now - since_;
    since_ = now;
    return std::exchange(isPluginAtWork_, isAtWork);
}

void CallInterceptor::dialogShown(const std::string& layout) {
    dialogTimes_.push_back({layout, own_, Clock::now() - entered_});
}

void CallInterceptor::guard(const std::string& name, const std::function<void()>& function) try {
    if (depth_++ == 0) {
        entered_ = Clock::now();
        own_ = {};
    }
    struct Leaving {
        ~Leaving() {
            interceptor.setPluginAtWork(wasAtWork);
            --interceptor.depth_;
        }
        CallInterceptor& interceptor;
        bool wasAtWork;
    } const leaving{*this, setPluginAtWork(true)};
    function();
} catch (const std::exception& error) {
    addViolation("An exception left " + name + ": " + error.what());
} catch (...) {
    addViolation("An exception without a text left " + name + ".");
}

CallCount& CallInterceptor::countOf(const char* name) {
    auto*& known = countsByLiteral_[name];
    // A library that is loaded again may have another name in the same place.
    if (known == nullptr || known->first != name) known = &*counts_.try_emplace(name).first;
    return known->second;
}

std::optional<Fault> CallInterceptor::record(const char* name, CallCount& call, FaultKinds kinds,
                                             std::size_t hostCall) {
    call.kinds = kinds;
    ++call.count;
    for (const Fault& fault : faults_) {
        if (fault.call.empty() ? hostCall == 0 : fault.call != name) continue;
        if (fault.number != 0 && fault.number != (fault.call.empty() ? hostCall : call.count)) continue;
        Fault due = fault;
        if (std::find(kinds.begin(), kinds.end(), fault.kind) == kinds.end()) due.kind = kinds.front();
        return due;
    }
    return std::nullopt;
}

std::optional<Fault> CallInterceptor::recordHostCall(const char* name, FaultKinds kinds) {
    calls_.push_back(name);
    auto fault = record(name, countOf(name), kinds, calls_.size());
    emptied_ = fault && fault->kind == FaultKind::empty;
    return fault;
}

std::optional<Fault> CallInterceptor::enterOther(const char* name, FaultKinds kinds) {
    const std::lock_guard lock(mutex_);
    return record(name, countOf(name), kinds, 0);
}

void CallInterceptor::addTime(const char* name, Clock::duration time) {
    const std::lock_guard lock(mutex_);
    countOf(name).time += time;
}

bool CallInterceptor::onHostThread(const char* name) {
    if (std::this_thread::get_id() == hostThread_) return true;
    violations_.push_back(std::string(name) + " was called on a thread that is not the host's.");
    return false;
}

int CallInterceptor::enterUf(const char* name, FaultKinds kinds, bool needsBracket) {
    std::lock_guard lock(mutex_);
    const auto fault = recordHostCall(name, kinds);
    if (!onHostThread(name)) return status::wrongThread;
    if (needsBracket && bracketDepth_ == 0) {
        violations_.push_back(std::string(name) + " was called outside UF_initialize and UF_terminate.");
        return status::notInitialized;
    }
    return fault && !emptied_ ? fault->status : 0;
}

bool CallInterceptor::enter(const char* name, FaultKinds kinds) {
    std::lock_guard lock(mutex_);
    const auto fault = recordHostCall(name, kinds);
    if (!onHostThread(name)) fail("The host was called on another thread than its own.");
    if (!fault || emptied_) return true;
    if (fault->kind == FaultKind::null) return false;
    if (fault->kind == FaultKind::exception) throw std::runtime_error(fault->message);
    if (fault->kind == FaultKind::unknown) throw UnknownException{};
    fail(fault->message);
}

void CallInterceptor::bracketAsked(int status) {
    std::lock_guard lock(mutex_);
    bracketRefused_ = status != 0;
    if (status == 0) ++bracketDepth_;
}

void CallInterceptor::bracketClosed() {
    std::lock_guard lock(mutex_);
    if (bracketDepth_ == 0)
        violations_.push_back("UF_terminate was called without UF_initialize.");
    else
        --bracketDepth_;
}

}  // namespace devkit
