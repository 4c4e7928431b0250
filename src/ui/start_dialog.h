// The sign-in dialog.
#pragma once

#include <functional>

namespace ui {

/// Shows "start.dlx" modally. Its button runs `signIn` (which reports its outcome itself) and then closes the dialog;
/// an exception of `signIn` is shown in a box, and the dialog closes all the same. Host's thread. Throws nothing.
void showStartDialog(const std::function<void()>& signIn) noexcept;

}  // namespace ui
