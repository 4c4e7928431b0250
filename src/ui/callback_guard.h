// Where the host calls the plug-in: no exception goes back.
#pragma once

#include <functional>

namespace ui {

/// What is shown for an exception without a text.
inline constexpr const char* unknownError = "Unknown error.";

/// Runs a callback of a dialog; what escapes it is shown by showFailureMessage(). Host's thread.
void guardCallback(const std::function<void()>& callback) noexcept;

/// Runs a whole dialog or a whole entry; what escapes it is shown by showExceptionMessage(). Host's thread.
void guardRun(const std::function<void()>& run) noexcept;

}  // namespace ui
