// The host's message boxes under the plug-in's title.
#pragma once

#include <string>

namespace ui {

/// Error box titled "Pivra". Modal; host's thread. A host exception passes through.
void ShowErrorMessage(const std::string& message);

/// Information box titled "Pivra". Modal; host's thread. A host exception passes through.
void ShowInfoMessage(const std::string& message);

/// Error box titled "Pivra", for what a callback of a dialog failed with. Never throws: where the box itself cannot be
/// shown the text goes to the log.
void showFailureMessage(const std::string& message) noexcept;

/// Error box titled "Block Styler", for an exception that ends a dialog or a run. Never throws, as
/// showFailureMessage().
void showExceptionMessage(const std::string& message) noexcept;

}  // namespace ui
