#include "calls.h"

namespace devkit {

CallInterceptor& CallInterceptor::instance() {
    static CallInterceptor interceptor;
    return interceptor;
}

void CallInterceptor::reset() {
    std::lock_guard lock(mutex_);
    hostThread_ = std::this_thread::get_id();
    calls_.clear();
    counts_.clear();
    faults_.clear();
    violations_.clear();
    bracketDepth_ = 0;
    bracketRefused_ = false;
}

void CallInterceptor::addFault(const Fault& fault) {
    std::lock_guard lock(mutex_);
    faults_.push_back(fault);
}

void CallInterceptor::addViolation(const std::string& sentence) {
    std::lock_guard lock(mutex_);
    violations_.push_back(sentence);
}

void CallInterceptor::guard(const std::string& name, const std::function<void()>& function) try {
    function();
} catch (const std::exception& error) {
    addViolation("An exception left " + name + ": " + error.what());
} catch (...) {
    addViolation("An exception without a text left " + name + ".");
}

const Fault* CallInterceptor::record(const char* name) {
    calls_.emplace_back(name);
    const std::size_t number = ++counts_[name];
    for (const Fault& fault : faults_) {
        if (!fault.call.empty() && fault.call != name) continue;
        if (fault.number == 0 || fault.number == (fault.call.empty() ? calls_.size() : number)) return &fault;
    }
    return nullptr;
}

bool CallInterceptor::onHostThread(const char* name) {
    if (std::this_thread::get_id() == hostThread_) return true;
    violations_.push_back(std::string(name) + " was called on a thread that is not the host's.");
    return false;
}

int CallInterceptor::enterUf(const char* name, bool needsBracket) {
    std::lock_guard lock(mutex_);
    const Fault* fault = record(name);
    if (!onHostThread(name)) return status::wrongThread;
    if (needsBracket && bracketDepth_ == 0) {
        violations_.push_back(std::string(name) + " was called outside UF_initialize and UF_terminate.");
        return status::notInitialized;
    }
    return fault != nullptr ? fault->status : 0;
}

bool CallInterceptor::enter(const char* name, bool returnsPointer) {
    std::lock_guard lock(mutex_);
    const Fault* fault = record(name);
    if (!onHostThread(name)) fail("The host was called on another thread than its own.");
    if (fault == nullptr) return true;
    if (fault->null && returnsPointer) return false;
    fail(fault->message);
}

void CallInterceptor::bracketAsked(int status) {
    std::lock_guard lock(mutex_);
    bracketRefused_ = status != 0;
    if (status == 0) ++bracketDepth_;
}

void CallInterceptor::bracketClosed() {
    std::lock_guard lock(mutex_);
    if (bracketDepth_ == 0) {
        violations_.push_back("UF_terminate was called without UF_initialize.");
    } else {
        --bracketDepth_;
    }
}

}  // namespace devkit
