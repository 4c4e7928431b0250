#include <config/service_presets.h>

namespace config {
namespace {

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

}  // namespace

const ServicePreset& servicePreset(std::string_view name) {
    if (name == "us_prod") return usProduction;
    if (name == "stage" || name == "staging") return staging;
    if (name == "us_stage" || name == "us_staging") return usStaging;
    return production;
}

}  // namespace config
