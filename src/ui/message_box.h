// The host's message boxes under the plug-in's title, and the guard around whatever the host calls: no exception goes
// back to it, and what was thrown is shown. Host's thread.
#pragma once

#include <functional>
#include <string>

namespace ui {

/// Error box titled "Pivra". Modal. A host exception passes through.
void ShowErrorMessage(const std::string& message);

/// Information box titled "Pivra". Modal. A host exception passes through.
void ShowInfoMessage(const std::string& message);

/// Error box titled "Pivra", for what a callback of a dialog failed with. Never throws: where the box itself cannot be
/// shown the text goes to the log.
void showFailureMessage(const std::string& message) noexcept;

/// Error box titled "Block Styler", for an exception that ends a dialog or a run. Never throws, as
/// showFailureMessage().
void showExceptionMessage(const std::string& message) noexcept;

/// What is shown for an exception without a text.
inline constexpr const char* unknownError = "Unknown error.";

/// Runs a callback of a dialog; an exception is shown by showFailureMessage().
void guardCallback(const std::function<void()>& callback) noexcept;

/// Runs a whole dialog or a whole entry; an exception is shown by showExceptionMessage().
void guardRun(const std::function<void()>& run) noexcept;

}  // namespace ui
