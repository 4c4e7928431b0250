#include "service/service_client_provider.h"

#include "config/log_settings.h"
#include "config/service_environment.h"
#include "logging/cpp_piv_logger.h"
#include "logging/log.h"
#include "platform/module.h"
#include "platform/text_encoding.h"
#include "service/version.h"

#include <cpp_piv/initialize_options.h>

namespace service {
namespace {

constexpr const char* nativeLibraryName = "gopiv-windows-amd64.dll";
constexpr const char* clientLogFileName = "pivra-gopiv-integration.log";

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

/// The client that the provider holds at the time of the call.
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
    return isLoggingOff() ? nullptr : logging::makeCppPivLogger();
}

cpp_piv::CppPivInitializeOptions makeInitializeOptions() {
    cpp_piv::CppPivInitializeOptions options;
    if (!isLoggingOff()) {
        const std::filesystem::path logFile = logging::LogFilePath(clientLogFileName);
        if (!logFile.empty()) options.logFile = platform::utf8FromPath(logFile);
        options.logLevel = logging::lowerCaseName(logging::currentLevel());
    }
    options.environment = config::SelectServiceEnvironment(config::ReadServerOverrides());
    options.clientVersions = {{clientName, version}};
    return options;
}

auth::AuthClientCallbacks authClientCallbacks() {
    return {[] { return client()->localAuthFlowAuthorize(); }, [] { return client()->localAuthFlowComplete(); },
            [](const auto&... arguments) { return client()->getCurrentUser(arguments...); },
            [] { return client()->localAuthFlowLogout(); }};
}

pivra::WorkspaceServiceCallbacks workspaceServiceCallbacks() {
    return {[](const auto&... arguments) { return client()->listWorkspaces(arguments...); },
            [](const auto&... arguments) { return client()->findRevision(arguments...); },
            [](const auto&... arguments) { return client()->getRootDirectory(arguments...); },
            [](const auto&... arguments) { return client()->upload(arguments...); }};
}

}  // namespace service
