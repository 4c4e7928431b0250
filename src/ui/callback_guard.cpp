#include "ui/callback_guard.h"

#include "service/failure_message.h"
#include "ui/message_box.h"

namespace ui {

void guardCallback(const std::function<void()>& callback) noexcept {
    try {
        callback();
    } catch (...) {
        showFailureMessage(service::failureMessage(unknownError));
    }
}

void guardRun(const std::function<void()>& run) noexcept {
    try {
        run();
    } catch (...) {
        showExceptionMessage(service::failureMessage(unknownError));
    }
}

}  // namespace ui
