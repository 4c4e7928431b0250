#include "service/service_client_provider.h"

#include "config/log_settings.h"
#include "config/service_environment.h"
#include "logging/log.h"
#include "platform/module.h"
#include "platform/text_encoding.h"

#include <cpp_piv/initialize_options.h>

namespace pivra {
namespace {

constexpr const char* nativeLibraryName = "gopiv-windows-amd64.dll";
constexpr const char* clientLogFileName = "pivra-gopiv-integration.log";

/// Writes the client library's messages to the log, each at its own level. Stateless; any thread.
class CppPivLoggerAdapter final : public cpp_piv::ICppPivLogger {
 public:
    void debug(const std::string& text) override { logging::LogDebug(text); }
    void info(const std::string& text) override { logging::LogInfo(text); }
    void warning(const std::string& text) override { logging::LogWarning(text); }
    void error(const std::string& text) override { logging::LogError(text); }
};

bool isLoggingOff() {
    return logging::currentLevel() == logging::LogLevel::off;
}

std::shared_ptr<cpp_piv::CppPivClient> createClient() {
    config::ApplyLogSettings();
    auto bridge = std::make_shared<cpp_piv::DynamicCppPivBridge>(nativeLibraryPath());
    auto client = std::make_shared<cpp_piv::CppPivClient>(std::move(bridge), makeClientLogger());
    client->initialize(makeInitializeOptions());
    return client;
}

std::shared_ptr<cpp_piv::CppPivClient> client() {
    return ServiceClientProvider::instance().client();
}

}  // namespace

ServiceClientProvider& ServiceClientProvider::instance() {
    static ServiceClientProvider provider;
    return provider;
}

std::shared_ptr<cpp_piv::CppPivClient> ServiceClientProvider::client() {
    static const std::shared_ptr<cpp_piv::CppPivClient> client = createClient();
    return client;
}

std::string nativeLibraryPath() {
    return platform::fileSystemTextFromPath(platform::moduleDirectory() / nativeLibraryName);
}

std::shared_ptr<cpp_piv::ICppPivLogger> makeClientLogger() {
    return isLoggingOff() ? nullptr : std::make_shared<CppPivLoggerAdapter>();
}

cpp_piv::CppPivInitializeOptions makeInitializeOptions() {
    cpp_piv::CppPivInitializeOptions options;
    if (!isLoggingOff()) {
        const std::filesystem::path logFile = logging::LogFilePath(clientLogFileName);
        if (!logFile.empty()) options.logFile = platform::utf8FromPath(logFile);
        options.logLevel = logging::lowerCaseName(logging::currentLevel());
    }
    options.environment = config::SelectServiceEnvironment(config::ReadServerOverrides());
    options.clientVersions = {{clientName, clientVersion}};
    return options;
}

auth::AuthClientCallbacks authClientCallbacks() {
    return {[] { return client()->localAuthFlowAuthorize(); }, [] { return client()->localAuthFlowComplete(); },
            [](const auto&... arguments) { return client()->getCurrentUser(arguments...); },
            [] { return client()->localAuthFlowLogout(); }};
}

WorkspaceServiceCallbacks workspaceServiceCallbacks() {
    return {[](const auto&... arguments) { return client()->listWorkspaces(arguments...); },
            [](const auto&... arguments) { return client()->findRevision(arguments...); },
            [](const auto&... arguments) { return client()->getRootDirectory(arguments...); },
            [](const auto&... arguments) { return client()->upload(arguments...); }};
}

}  // namespace pivra
