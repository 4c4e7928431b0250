// What went wrong, as a text.
#pragma once

#include <exception>
#include <functional>
#include <optional>
#include <string>

namespace pivra {

/// Runs `action` and returns the text of the exception that left it, "unknown" for one without text; nothing when none
/// did.
inline std::optional<std::string> errorOf(const std::function<void()>& action) {
    try {
        action();
        return std::nullopt;
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "unknown";
    }
}

}  // namespace pivra
