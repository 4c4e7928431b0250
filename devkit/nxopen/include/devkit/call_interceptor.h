// Every call of the stand-in host's interface passes the interceptor: it checks the thread and the bracket of the C
// interface, records the call, and injects faults.
#pragma once

#include <nxopen_export.h>

#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace devkit {

/// One call to fail: the `number`th (from 1) call of `call`, or of any call when the name is empty; 0 fails each of
/// them. Calls of the C interface return `status`; others throw an NXException that says `message`, or return null when
/// `null` is set and they return a pointer. What ends something (a bracket, a clone session, a help context, a builder)
/// ends it although the call fails.
struct Fault {
    std::string call;
    std::size_t number = 1;
    int status = 1;
    std::string message = "The operation failed.";
    bool null = false;
};

/// A call on another thread is a violation and fails; everything else is for the host's thread. calls(), counts() and
/// violations() are read when no other thread calls.
class NXOPEN_EXPORT CallInterceptor {
 public:
    static CallInterceptor& instance();

    /// Makes the calling thread the host's, and forgets records, faults and violations.
    void reset();
    void addFault(const Fault& fault);

    /// The names of all calls so far, in order, a method's with the class in whose header it stands: "UF_initialize",
    /// "NXOpen::BasePart::Save", "NXOpen::PrintPDFBuilder::Commit".
    const std::vector<std::string>& calls() const { return calls_; }
    /// How often each was called.
    const std::map<std::string, std::size_t>& counts() const { return counts_; }
    /// Broken rules, each a sentence: a call on another thread, a call of the C interface outside its bracket, a
    /// bracket or help context left open (asked by the host after each run).
    const std::vector<std::string>& violations() const { return violations_; }
    void addViolation(const std::string& sentence);
    /// Calls a function of the plug-in. An exception that leaves it is a violation, and goes no further.
    void guard(const std::string& name, const std::function<void()>& function);

    int bracketDepth() const { return bracketDepth_; }
    /// Whether the latest UF_initialize failed: what needed its bracket could not be done.
    bool bracketRefused() const { return bracketRefused_; }

    // What the stand-ins call. enterUf returns 0 or the status to return; enter throws, or returns false when the call
    // returns a pointer and is to return null.
    int enterUf(const char* name, bool needsBracket = true);
    bool enter(const char* name, bool returnsPointer = false);
    /// UF_initialize returns `status`.
    void bracketAsked(int status);
    void bracketClosed();

 private:
    const Fault* record(const char* name);
    bool onHostThread(const char* name);

    std::mutex mutex_;
    std::thread::id hostThread_ = std::this_thread::get_id();
    std::vector<std::string> calls_;
    std::map<std::string, std::size_t> counts_;
    std::vector<Fault> faults_;
    std::vector<std::string> violations_;
    int bracketDepth_ = 0;
    bool bracketRefused_ = false;
};

}  // namespace devkit
