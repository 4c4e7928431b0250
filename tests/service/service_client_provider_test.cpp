#include "service/service_client_provider.h"
#include <support/plugin_folder.h>

#include "logging/log.h"
#include "platform/text_encoding.h"

#include <cpp_piv/initialize_options.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <future>
#include <set>
#include <stdexcept>

using namespace pivra;
using test_support::PluginFolder;

namespace {

TEST(ServiceClientOptions, nameTheLibrarysLogAndTheService) {
    const PluginFolder folder;
    folder.startLogging("pivra_nx_server_url = https://override/\n");
    const auto options = makeInitializeOptions();
    EXPECT_EQ(options.logFile, platform::utf8FromPath(folder.path() / "logs" / "pivra-gopiv-integration.log"));
    EXPECT_EQ(options.logLevel, "debug");
    EXPECT_EQ(options.environment.value().at("ServerURL"), "https://override/");
    EXPECT_FALSE(options.logToConsole || options.disableTelemetry || options.disableCache || options.offline ||
                 options.requestTimeoutMs);
    const auto logger = makeClientLogger();
    logger->debug("[cpp-piv] d");
    logger->info("[cpp-piv] i");
    logger->warning("[cpp-piv] w");
    logger->error("[cpp-piv] e");
    EXPECT_THAT(folder.logLines(), testing::IsSupersetOf({"[DEBUG] [cpp-piv] d", "[INFO] [cpp-piv] i",
                                                          "[WARNING] [cpp-piv] w", "[ERROR] [cpp-piv] e"}));
    logging::setCurrentLevel(logging::LogLevel::off);
    EXPECT_FALSE(makeInitializeOptions().logFile || makeInitializeOptions().logLevel || makeClientLogger());
    logging::setCurrentLevel(logging::LogLevel::error);
    logging::setLogDirectory({});
    EXPECT_FALSE(makeInitializeOptions().logFile);
    EXPECT_TRUE(makeClientLogger());
}

TEST(ServiceClient, IsCreatedOnceForAllCallersAfterAFailedCreation) {
    const PluginFolder folder;
    const auto client = [] { return ServiceClientProvider::instance().client(); };
    EXPECT_THROW(client(), std::runtime_error);
    EXPECT_THROW(authClientCallbacks().authorize(), std::runtime_error);
    test_support::setModuleFileName(std::filesystem::absolute(GOPIV_LIBRARY));

    constexpr int callers = 8;
    std::promise<void> start;
    const auto started = start.get_future().share();
    std::vector<std::future<std::shared_ptr<cpp_piv::CppPivClient>>> answers;
    for (int i = 0; i < callers; ++i) {
        answers.push_back(std::async(std::launch::async, [&, started] { return started.wait(), client(); }));
    }
    start.set_value();
    std::set<std::shared_ptr<cpp_piv::CppPivClient>> clients;
    for (auto& answer : answers) clients.insert(answer.get());
    EXPECT_EQ(clients.size(), 1u);

    const auto logs = folder.localAppData() / "Pivra" / "NX" / "logs";
    const std::string greeting = std::string("used by nx-integration ") + PIVRA_VERSION;
    for (const char* name : {"pivra-integration.log", "pivra-gopiv-integration.log"}) {
        const std::string log = test_support::readFile(logs / name);
        EXPECT_NE(log.find(greeting), std::string::npos) << name;
        EXPECT_EQ(log.find(greeting), log.rfind(greeting)) << name;
    }
}

}  // namespace
