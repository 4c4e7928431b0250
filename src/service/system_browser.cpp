#include "service/system_browser.h"

#include "config/properties.h"

#include <stdexcept>
#include <utility>

namespace auth {

bool isWebAddress(std::string_view address) {
    const std::string lowered = config::toLower(address);
    return lowered.starts_with("http://") || lowered.starts_with("https://");
}

void openSystemBrowser(const std::string& address, const std::function<int(const std::string&)>& shell) {
    if (!isWebAddress(address) || shell(address) <= platform::shellFailureLimit) {
        throw std::runtime_error("Failed to launch the system browser for Pivra authentication.");
    }
}

AuthPlatformCallbacks systemCallbacks(AuthSession& session) {
    return {[](const std::string& address) { openSystemBrowser(address); },
            [&session](std::function<void()> task) { session.runInWorker(std::move(task)); }};
}

}  // namespace auth
