// Failures of operations, and small texts.
#pragma once

#include <devkit/files.h>

#include <stdexcept>
#include <string>

namespace gopiv {

/// An operation that the service refuses; what() is its message.
struct Refusal : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// An operation that fails without giving a reason.
struct SilentRefusal {};

/// The current time in UTC: "YYYY-MM-DDTHH:MM:SSZ".
std::string utcNow();

/// devkit::secretMark and random digits: 64 hexadecimal digits.
std::string randomSecret();

using devkit::pathOf;
using devkit::utf8;

}  // namespace gopiv
