#include "platform/error_text.h"

#include "platform/text_encoding.h"

#include <exception>

namespace platform {

std::string errorText(const std::error_code& error) {
    return utf8FromSystemText(error.message());
}

std::string currentErrorText(const char* otherwise) {
    try {
        throw;
    } catch (const std::exception& error) {
        if (*error.what() != '\0') return utf8FromSystemText(error.what());
    } catch (...) {
    }
    return otherwise;
}

std::string currentErrorChain(const char* otherwise) {
    std::string text = currentErrorText(otherwise);
    try {
        throw;
    } catch (const std::nested_exception& outer) {
        if (!outer.nested_ptr()) return text;
        try {
            outer.rethrow_nested();
        } catch (...) {
            return text + " " + currentErrorChain(otherwise);
        }
    } catch (...) {
    }
    return text;
}

std::optional<std::string> errorOf(const std::function<void()>& action) {
    try {
        action();
        return std::nullopt;
    } catch (...) {
        return currentErrorText("unknown");
    }
}

}  // namespace platform
