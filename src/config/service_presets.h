// Deployment data: the one place to fill in for a real service.
#pragma once

#include <string_view>

namespace config {

/// One deployment of the service. Addresses are https addresses ending in "/", except the audience, whose path is
/// "/api/v2/"; the client id has 32 letters and digits.
struct ServicePreset {
    std::string_view loginUrl;
    std::string_view serverUrl;
    std::string_view clientId;
    std::string_view audience;
};

/// The preset that the lower-case `name` selects: "us_prod", "stage" or "staging", "us_stage" or "us_staging";
/// production for every other name.
const ServicePreset& servicePreset(std::string_view name);

}  // namespace config
