#include "ui/message_box.h"

#include "logging/log.h"
#include "nx/text.h"
#include "platform/error_text.h"

#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/UI.hxx>

#include <stdexcept>

namespace ui {
namespace {

using NXOpen::NXMessageBox;

void showBox(const char* title, NXMessageBox::DialogType type, const std::string& message) {
    auto* host = NXOpen::UI::GetUI();
    NXMessageBox* box = host != nullptr ? host->NXMessageBox() : nullptr;
    if (box == nullptr) throw std::runtime_error("NX offers no message box.");
    box->Show(nx::toHost(title), type, nx::toHost(message));
}

void showOrLog(const char* title, const std::string& message) noexcept {
    try {
        showBox(title, NXMessageBox::DialogTypeError, message);
    } catch (...) {
        logging::LogError(message);
    }
}

void guard(const std::function<void()>& action, void (*show)(const std::string&)) noexcept {
    try {
        action();
    } catch (...) {
        try {
            show(platform::currentErrorText(unknownError));
        } catch (...) {
            // Out of memory for the text.
            logging::LogError(unknownError);
        }
    }
}

}  // namespace

void ShowErrorMessage(const std::string& message) {
    showBox("Pivra", NXMessageBox::DialogTypeError, message);
}

void ShowInfoMessage(const std::string& message) {
    showBox("Pivra", NXMessageBox::DialogTypeInformation, message);
}

void showFailureMessage(const std::string& message) noexcept {
    showOrLog("Pivra", message);
}

void showExceptionMessage(const std::string& message) noexcept {
    showOrLog("Block Styler", message);
}

void guardCallback(const std::function<void()>& callback) noexcept {
    guard(callback, showFailureMessage);
}

void guardRun(const std::function<void()>& run) noexcept {
    guard(run, showExceptionMessage);
}

}  // namespace ui
