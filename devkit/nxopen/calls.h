// How the stand-ins enter the gate and fail.
#pragma once

#include <devkit/gate.h>
#include <NXOpen/NXException.hxx>

#include <string>

namespace devkit {

/// Enters a method that returns no pointer.
inline void enter(const char* name) {
    Gate::instance().enter(name);
}

/// Enters a method that returns a pointer; false when it is to return null.
inline bool enterForPointer(const char* name) {
    return Gate::instance().enter(name, true);
}

/// Enters a function of the C interface; 0 or the status to return.
inline int enterUf(const char* name) {
    return Gate::instance().enterUf(name);
}

[[noreturn]] inline void fail(const std::string& message) {
    throw NXOpen::NXException::Create(message.c_str());
}

}  // namespace devkit
