#include "config/service_environment.h"

#include "config/properties.h"
#include "platform/text.h"

#include <string_view>

namespace config {
namespace {

/// One deployment of the service. Addresses are https addresses ending in "/", except the audience, whose path is
/// "/api/v2/"; the client id has 32 letters and digits.
struct ServicePreset {
    std::string_view loginUrl;
    std::string_view serverUrl;
    std::string_view clientId;
    std::string_view audience;
};

// Placeholders under a reserved domain: put the service operator's addresses and client identifiers here, in the same
// forms. Nothing else in the sources names a deployment.
constexpr ServicePreset production{"https://login.pivra.example/", "https://app.pivra.example/",
                                   "PivraNxProduction000000000000001", "https://api.pivra.example/api/v2/"};
constexpr ServicePreset usProduction{"https://login.us.pivra.example/", "https://app.us.pivra.example/",
                                     "PivraNxUsProduction0000000000001", "https://api.us.pivra.example/api/v2/"};
constexpr ServicePreset staging{"https://login.staging.pivra.example/", "https://app.staging.pivra.example/",
                                "PivraNxStaging000000000000000001", "https://api.staging.pivra.example/api/v2/"};
constexpr ServicePreset usStaging{"https://login.us-staging.pivra.example/", "https://app.us-staging.pivra.example/",
                                  "PivraNxUsStaging0000000000000001", "https://api.us-staging.pivra.example/api/v2/"};

/// The preset that the lower-case `name` selects: "us_prod", "stage" or "staging", "us_stage" or "us_staging";
/// production for every other name.
const ServicePreset& servicePreset(std::string_view name) {
    if (name == "us_prod") return usProduction;
    if (name == "stage" || name == "staging") return staging;
    if (name == "us_stage" || name == "us_staging") return usStaging;
    return production;
}

std::string chosen(const std::string& replacement, std::string_view preset) {
    return replacement.empty() ? std::string(preset) : replacement;
}

}  // namespace

ServerOverrides ReadServerOverrides() {
    return {GetProperty("pivra_nx_server"), GetProperty("pivra_nx_login_url"), GetProperty("pivra_nx_server_url"),
            GetProperty("pivra_nx_client_id"), GetProperty("pivra_nx_audience")};
}

nlohmann::json SelectServiceEnvironment(const ServerOverrides& overrides) {
    const auto& preset = servicePreset(platform::toLower(overrides.server));
    return {{"LoginURL", chosen(overrides.loginUrl, preset.loginUrl)},
            {"ServerURL", chosen(overrides.serverUrl, preset.serverUrl)},
            {"ClientID", chosen(overrides.clientId, preset.clientId)},
            {"Audience", chosen(overrides.audience, preset.audience)}};
}

}  // namespace config
