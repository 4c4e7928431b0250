// Which deployment of the Pivra service the plug-in talks to.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace config {

/// The settings in `pivra.properties` that name the deployment; a text is empty when its key is absent.
struct ServerOverrides {
    std::string server;     ///< `pivra_nx_server`, the name of a preset
    std::string loginUrl;   ///< `pivra_nx_login_url`
    std::string serverUrl;  ///< `pivra_nx_server_url`
    std::string clientId;   ///< `pivra_nx_client_id`
    std::string audience;   ///< `pivra_nx_audience`
};

/// Reads the five settings from the properties that were loaded last.
ServerOverrides ReadServerOverrides();

/// The environment description for the client library: a JSON object with exactly the text members "LoginURL",
/// "ServerURL", "ClientID" and "Audience". The preset is chosen by `overrides.server` in any letter case, an unknown
/// name choosing production; each override that is not empty replaces its member.
nlohmann::json SelectServiceEnvironment(const ServerOverrides& overrides);

}  // namespace config
