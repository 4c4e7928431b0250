// Every call that the plug-in makes to its neighbours passes the interceptor: the stand-in host, the client library of
// the service, and, where they are stand-ins, files and Windows. It checks the thread and the bracket of the host's C
// interface, counts the calls, and injects faults.
#pragma once

#include <nxopen_export.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

namespace devkit {

/// How a call fails.
enum class FaultKind {
    error,      ///< a status, the host's exception, an error of the service or of the system
    exception,  ///< a std::exception
    unknown,    ///< an exception of a type that nobody knows
    null,       ///< null instead of a pointer
    empty,      ///< empty texts, and nothing done
    missing,    ///< what is asked for is not there
    denied,     ///< access is denied
    shared,     ///< another program holds the file
    full,       ///< the disk is full, after half the bytes
    vanished,   ///< somebody has deleted the file just before
    late,       ///< done, but a moment later
    cutOff      ///< done, but the answer is lost
};

/// The ways in which a call can fail, the usual one first. Of static lifetime.
using FaultKinds = std::span<const FaultKind>;

/// One call to fail: the `number`th (from 1) call of `call`, or of any call of the host when the name is empty; 0 fails
/// each of them. A call that cannot fail in this way fails in its usual one. What ends something (a bracket, a clone
/// session, a help context, a builder) ends it although the call fails.
struct Fault {
    std::string call;
    std::size_t number = 1;
    int status = 1;  ///< of the C interface
    std::string message = "The operation failed.";
    FaultKind kind = FaultKind::error;
};

using Milliseconds = std::chrono::duration<double, std::milli>;

/// How often a call was made, how it can fail, and, of the service's, how long it took in all.
struct CallCount {
    std::size_t count = 0;
    FaultKinds kinds;
    Milliseconds time{};
};

using CallCounts = std::map<std::string, CallCount, std::less<>>;

/// Since the host entered the plug-in, until a dialog was ready to be seen; `own` leaves out what neighbours took.
struct DialogTime {
    std::string layout;
    Milliseconds own;
    Milliseconds all;
};

/// A call of the host on another thread is a violation and fails; other neighbours may be called on any.
/// calls(), counts() and violations() are read when no other thread calls.
class NXOPEN_EXPORT CallInterceptor {
 public:
    static CallInterceptor& instance();

    /// Makes the calling thread the host's, and forgets records, faults and violations.
    void reset();
    void addFault(const Fault& fault);

    /// The names of all calls of the host so far, in order, a method's with the class in whose header it stands:
    /// "UF_initialize", "NXOpen::BasePart::Save", "NXOpen::PrintPDFBuilder::Commit".
    const std::vector<std::string_view>& calls() const { return calls_; }
    /// The calls of all neighbours.
    const CallCounts& counts() const { return counts_; }
    /// Broken rules, each a sentence: a call on another thread, a call of the C interface outside its bracket, a
    /// bracket or help context left open (asked by the host after each run).
    const std::vector<std::string>& violations() const { return violations_; }
    void addViolation(const std::string& sentence);
    const std::vector<DialogTime>& dialogTimes() const { return dialogTimes_; }
    void dialogShown(const std::string& layout);
    /// Says who is at work on the host's thread from now on; whether it was the plug-in until now. Elsewhere without
    /// effect.
    bool setPluginAtWork(bool isAtWork);

    /// Calls a function of the plug-in. An exception that leaves it is a violation, and goes no further.
    void guard(const std::string& name, const std::function<void()>& function);

    int bracketDepth() const { return bracketDepth_; }
    /// Whether the latest UF_initialize failed: what needed its bracket could not be done.
    bool bracketRefused() const { return bracketRefused_; }

    // What the stand-ins call; the names are literals. enterUf returns 0 or the status to return;
    // enter throws, or returns false when the call is to return null.
    int enterUf(const char* name, FaultKinds kinds, bool needsBracket = true);
    bool enter(const char* name, FaultKinds kinds);
    /// Enters a call of another neighbour; the fault that it is to have, if any.
    std::optional<Fault> enterOther(const char* name, FaultKinds kinds);
    void addTime(const char* name, std::chrono::steady_clock::duration time);
    /// Whether the host's present call is to give empty texts.
    bool emptied() const { return emptied_; }
    /// UF_initialize returns `status`.
    void bracketAsked(int status);
    void bracketClosed();

 private:
    CallCount& countOf(const char* name);
    std::optional<Fault> record(const char* name, CallCount& call, FaultKinds kinds, std::size_t hostCall);
    std::optional<Fault> recordHostCall(const char* name, FaultKinds kinds);
    bool onHostThread(const char* name);

    using Clock = std::chrono::steady_clock;

    std::mutex mutex_;
    bool isPluginAtWork_ = false;
    int depth_ = 0;  // of the host's calls into the plug-in
    Clock::time_point entered_;
    Clock::time_point since_;  // the plug-in or a neighbour is at work
    Clock::duration own_{};
    std::vector<DialogTime> dialogTimes_;
    std::thread::id hostThread_ = std::this_thread::get_id();
    std::vector<std::string_view> calls_;
    CallCounts counts_;
    std::unordered_map<const char*, CallCounts::value_type*> countsByLiteral_;  // to find them fast
    std::vector<Fault> faults_;
    std::vector<std::string> violations_;
    int bracketDepth_ = 0;
    bool bracketRefused_ = false;
    bool emptied_ = false;
};

/// While it exists, the calling thread works for a neighbour of the plug-in, and the time counts for the call `name`,
/// if any. In calls that take long.
class NeighbourTime {
 public:
    explicit NeighbourTime(const char* name = nullptr) : name_(name) {}
    ~NeighbourTime() {
        auto& interceptor = CallInterceptor::instance();
        interceptor.setPluginAtWork(wasPlugin_);
        if (name_ != nullptr) interceptor.addTime(name_, std::chrono::steady_clock::now() - start_);
    }
    NeighbourTime(const NeighbourTime&) = delete;
    NeighbourTime& operator=(const NeighbourTime&) = delete;

 private:
    const char* name_;
    bool wasPlugin_ = CallInterceptor::instance().setPluginAtWork(false);
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace devkit
