// How the stand-ins pass the call interceptor, and fail.
#pragma once

#include <devkit/call_interceptor.h>
#include <NXOpen/NXException.hxx>

#include <array>
#include <string>

namespace devkit {

namespace kinds {

inline constexpr std::array status{FaultKind::error};
inline constexpr std::array statusOrText{FaultKind::error, FaultKind::empty};
inline constexpr std::array thrown{FaultKind::error, FaultKind::exception, FaultKind::unknown};
inline constexpr std::array pointer{FaultKind::error, FaultKind::exception, FaultKind::unknown, FaultKind::null};
inline constexpr std::array text{FaultKind::error, FaultKind::exception, FaultKind::unknown, FaultKind::empty};

}  // namespace kinds

/// Enters a method that returns neither a pointer nor a text.
inline void enter(const char* name) {
    CallInterceptor::instance().enter(name, kinds::thrown);
}

/// Enters a method that returns a pointer; false when it is to return null.
inline bool enterForPointer(const char* name) {
    return CallInterceptor::instance().enter(name, kinds::pointer);
}

/// Enters a method that returns a text.
inline void enterForText(const char* name) {
    CallInterceptor::instance().enter(name, kinds::text);
}

/// Enters a function of the C interface; 0 or the status to return.
inline int enterUf(const char* name) {
    return CallInterceptor::instance().enterUf(name, kinds::status);
}

/// The same for one that gives texts.
inline int enterUfForText(const char* name) {
    return CallInterceptor::instance().enterUf(name, kinds::statusOrText);
}

/// The same for one that may be called outside the bracket.
inline int enterUfAnywhere(const char* name) {
    return CallInterceptor::instance().enterUf(name, kinds::status, false);
}

[[noreturn]] inline void fail(const std::string& message) {
    throw NXOpen::NXException::Create(message.c_str());
}

/// Statuses of the C interface beside those that its headers name.
namespace status {

inline constexpr int wrongThread = 1000001;
inline constexpr int notInitialized = 1000002;
inline constexpr int badTag = 1000003;
inline constexpr int textTooLong = 1000004;
inline constexpr int badName = 1000005;
inline constexpr int notFound = 1000006;
inline constexpr int emptyStack = 1000007;

/// The call broke a rule of the host, so that it has no effect at all; an injected fault may have one.
inline bool refused(int status) {
    return status == wrongThread || status == notInitialized;
}

}  // namespace status

}  // namespace devkit
