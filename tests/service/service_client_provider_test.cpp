#include <service/service_client_provider.h>
#include <support/plugin_folder.h>

#include <config/log_settings.h>
#include <logging/log.h>
#include <platform/text_encoding.h>

#include <cpp_piv/initialize_options.h>
#include <gmock/gmock.h>
#include <future>
#include <latch>
#include <set>
#include <stdexcept>

using namespace service;
using test_support::PluginFolder;
using testing::ElementsAre;
using testing::Pair;

namespace {

TEST(ServiceClientOptions, NameTheLibrarysLogAndTheService) {
    const PluginFolder folder;
    folder.startLogging("pivra_nx_server_url = https://override/\n");
    const auto options = makeInitializeOptions();
    EXPECT_EQ(options.logFile, platform::utf8FromPath(folder.path() / "logs" / "pivra-gopiv-integration.log"));
    EXPECT_EQ(options.logLevel, "debug");
    EXPECT_EQ(options.environment.value().at("ServerURL"), "https://override/");
    EXPECT_THAT(options.clientVersions, ElementsAre(Pair("nx-integration", PIVRA_VERSION)));
    EXPECT_FALSE(options.logToConsole || options.disableTelemetry || options.disableCache || options.offline ||
                 options.requestTimeoutMs);
    EXPECT_TRUE(makeClientLogger());
}

TEST(ServiceClientOptions, AreSilentWithoutLogging) {
    const PluginFolder folder;
    folder.writeProperties("pivra_nx_log_level = off\n");
    config::ApplyLogSettings();
    const auto options = makeInitializeOptions();
    EXPECT_FALSE(options.logFile || options.logLevel);
    EXPECT_TRUE(options.environment);
    EXPECT_FALSE(makeClientLogger());
}

TEST(ServiceClientOptions, NameNoLogFileWithoutALogDirectory) {
    const PluginFolder folder;
    logging::setLogDirectory({});
    const auto options = makeInitializeOptions();
    EXPECT_FALSE(options.logFile);
    EXPECT_EQ(options.logLevel, "info");
}

TEST(NativeLibrary, LiesBesideThePlugIn) {
    const PluginFolder folder;
    const auto expectBeside = [](const std::filesystem::path& directory) {
        test_support::setModuleFileName(directory / "nx-integration.dll");
        EXPECT_EQ(platform::pathFromFileSystemText(nativeLibraryPath()), directory / "gopiv-windows-amd64.dll");
    };
    expectBeside(folder.path());
    expectBeside(folder.path() / std::string(300, 'x'));
    expectBeside(folder.path().root_path());
    test_support::setModuleFileName({});
    EXPECT_THROW(nativeLibraryPath(), std::runtime_error);
}

/// The client over the native library. The process has one, so that each case must do with one that another has made.
struct ServiceClient : testing::Test, PluginFolder {
    const std::filesystem::path library = std::filesystem::absolute(GOPIV_LIBRARY);

    static std::shared_ptr<cpp_piv::CppPivClient> client() { return ServiceClientProvider::instance().client(); }
};

TEST_F(ServiceClient, IsCreatedOnceForAllCallersAfterAFailedCreation) {
    EXPECT_THROW(client(), std::runtime_error);
    EXPECT_THROW(authClientCallbacks().authorize(), std::runtime_error);
    test_support::setModuleFileName(library);

    constexpr int callers = 8;
    std::latch start(callers);
    std::vector<std::future<std::shared_ptr<cpp_piv::CppPivClient>>> answers;
    for (int i = 0; i < callers; ++i) {
        answers.push_back(std::async(std::launch::async, [&start] { return start.arrive_and_wait(), client(); }));
    }
    std::set<std::shared_ptr<cpp_piv::CppPivClient>> clients;
    for (auto& answer : answers) clients.insert(answer.get());
    EXPECT_EQ(clients.size(), 1u);

    const auto logs = localAppData() / "Pivra" / "NX" / "logs";
    const std::string greeting = std::string("used by nx-integration ") + PIVRA_VERSION;
    for (const char* name : {"pivra-integration.log", "pivra-gopiv-integration.log"}) {
        const std::string log = test_support::readFile(logs / name);
        EXPECT_NE(log.find(greeting), std::string::npos) << name;
        EXPECT_EQ(log.find(greeting), log.rfind(greeting)) << name;
    }
}

TEST_F(ServiceClient, TakesEachOperationThroughItsOwnCallable) {
    test_support::setModuleFileName(library);
    client();
    logging::setLogDirectory(path() / "logs");
    const auto auth = authClientCallbacks();
    const auto workspaces = workspaceServiceCallbacks();
    // The library has no service for a production address, and logs each operation that it refuses.
    EXPECT_THROW(auth.authorize(), std::runtime_error);
    EXPECT_THROW(auth.complete(), std::runtime_error);
    EXPECT_THROW(auth.currentUser("token"), std::runtime_error);
    EXPECT_THROW(auth.logout(), std::runtime_error);
    EXPECT_THROW(workspaces.listWorkspaces("token", ""), std::runtime_error);
    EXPECT_THROW(workspaces.findRevision("token", 1, "id", "1", "A", "", false, true, false, true), std::runtime_error);
    EXPECT_THROW(workspaces.rootDirectory("token", 1), std::runtime_error);
    EXPECT_THROW(workspaces.upload("token", {}, false), std::runtime_error);

    std::vector<std::string> refused;
    const std::string head = "[WARNING] [cpp-piv] ";
    for (const std::string& line : logLines()) {
        if (line.starts_with(head)) refused.push_back(line.substr(head.size(), line.find(" failed") - head.size()));
    }
    EXPECT_THAT(refused, ElementsAre("authorize", "complete", "currentUser", "logout", "listWorkspaces", "findRevision",
                                     "rootDirectory", "upload"));
}

}  // namespace
