// How a client is set up. Apart from the other records: it alone brings the JSON library along.
#pragma once

#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace cpp_piv {

/// Everything may be left unset.
struct CppPivInitializeOptions {
    std::optional<std::string> logFile;
    std::optional<std::string> logLevel;  ///< "debug", "info", "warning" or "error"
    std::optional<bool> logToConsole;
    std::optional<bool> disableTelemetry;
    std::optional<bool> disableCache;
    std::optional<bool> offline;
    std::optional<std::int64_t> requestTimeoutMs;
    std::optional<nlohmann::json> environment;  ///< "LoginURL", "ServerURL", "ClientID", "Audience"
    std::map<std::string, std::string> clientVersions;
};

}  // namespace cpp_piv
