// Turns a failure into the sentence that the user is shown.
#pragma once

#include <exception>
#include <string>

namespace service {

/// The text of the exception that is being handled, or `otherwise` when it carries none. Only inside a catch block.
inline std::string failureMessage(const char* otherwise) {
    try {
        throw;
    } catch (const std::exception& failure) {
        if (*failure.what() != '\0') return failure.what();
    } catch (...) {
    }
    return otherwise;
}

}  // namespace service
