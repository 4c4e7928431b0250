#include <config/properties.h>
#include <config/service_environment.h>
#include <config/service_presets.h>

namespace config {
namespace {

std::string chosen(const std::string& replacement, std::string_view preset) {
    return replacement.empty() ? std::string(preset) : replacement;
}

}  // namespace

ServerOverrides ReadServerOverrides() {
    return {GetProperty("pivra_nx_server"), GetProperty("pivra_nx_login_url"), GetProperty("pivra_nx_server_url"),
            GetProperty("pivra_nx_client_id"), GetProperty("pivra_nx_audience")};
}

nlohmann::json SelectServiceEnvironment(const ServerOverrides& overrides) {
    const auto& preset = servicePreset(toLower(overrides.server));
    return {{"LoginURL", chosen(overrides.loginUrl, preset.loginUrl)},
            {"ServerURL", chosen(overrides.serverUrl, preset.serverUrl)},
            {"ClientID", chosen(overrides.clientId, preset.clientId)},
            {"Audience", chosen(overrides.audience, preset.audience)}};
}

}  // namespace config
