#include "ui/callback_guard.h"

#include "logging/log.h"
#include "platform/error_text.h"
#include "ui/message_box.h"

namespace ui {
namespace {

void guard(const std::function<void()>& action, void (*show)(const std::string&)) noexcept {
    try {
        action();
    } catch (...) {
        try {
            show(platform::currentErrorText(unknownError));
        } catch (...) {
            // No memory for the text.
            logging::LogError(unknownError);
        }
    }
}

}  // namespace

void guardCallback(const std::function<void()>& callback) noexcept {
    guard(callback, showFailureMessage);
}

void guardRun(const std::function<void()>& run) noexcept {
    guard(run, showExceptionMessage);
}

}  // namespace ui
