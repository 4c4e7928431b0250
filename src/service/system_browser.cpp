#include "service/system_browser.h"

#include "platform/text.h"

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <utility>

namespace auth {

bool isWebAddress(std::string_view address) {
    const std::string lowered = platform::toLower(address);
    return (lowered.starts_with("http://") || lowered.starts_with("https://")) &&
           std::all_of(address.begin(), address.end(), [](char c) { return c > ' ' && c < 0x7F && c != '"'; });
}

void openInBrowser(const std::string& address, const Shell& shell) {
    if (!isWebAddress(address)) throw std::runtime_error("The address is no web address.");
    const int result = shell(address);
    if (result <= platform::shellFailureLimit) {
        throw std::runtime_error("The shell's result is " + std::to_string(result) + ".");
    }
}

void openSystemBrowser(const std::string& address, const Shell& shell) {
    try {
        openInBrowser(address, shell);
    } catch (...) {
        std::throw_with_nested(std::runtime_error("Failed to launch the system browser for Pivra authentication."));
    }
}

AuthPlatformCallbacks systemCallbacks(AuthSession& session) {
    return {[](const std::string& address) { openSystemBrowser(address); },
            [&session](std::function<void()> task) { session.runInWorker(std::move(task)); }};
}

}  // namespace auth
