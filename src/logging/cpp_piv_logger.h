// Lets the client library of the service write into the plug-in's log.
#pragma once

#include <cpp_piv/logger.h>

#include <memory>

namespace logging {

/// A logger that hands each text to Log() at its own level. Stateless; its operations may be called on any thread.
std::shared_ptr<cpp_piv::ICppPivLogger> makeCppPivLogger();

}  // namespace logging
