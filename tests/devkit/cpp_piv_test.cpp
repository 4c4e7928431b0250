#include <cpp_piv/client.h>

#include <stdexcept>

#include "service_fixture.h"

namespace {

using devkit_test::failureOf;
using nlohmann::json;

/// Answers every operation with the same text and keeps what was asked.
class ScriptedBridge : public cpp_piv::CppPivBridgeInterface {
 public:
    std::string call(const std::string& operation, const std::string& request) override {
        lastOperation = operation;
        lastRequest = json::parse(request);
        if (sink) {
            for (const char* level : {"debug", "info", "warning", "error"}) {
                sink(level, operation);
            }
        }
        return answer;
    }
    void setLogSink(std::function<void(const std::string&, const std::string&)> newSink) override { sink = newSink; }

    std::string answer;
    std::string lastOperation;
    json lastRequest;
    std::function<void(const std::string&, const std::string&)> sink;
};

class CppPivClientTest : public testing::Test {
 protected:
    std::shared_ptr<ScriptedBridge> bridge = std::make_shared<ScriptedBridge>();
    std::shared_ptr<devkit_test::RecordingLogger> logger = std::make_shared<devkit_test::RecordingLogger>();
    cpp_piv::CppPivClient client{bridge, logger};
};

TEST_F(CppPivClientTest, SetOptionsAloneReachTheLibrary) {
    bridge->answer = R"({"result": null})";
    cpp_piv::CppPivInitializeOptions options;
    options.logFile = "C:\\logs\\d\xC3\xA9mo.log";
    options.environment = json{{"ServerURL", "https://server.example.com/"}};
    options.clientVersions = {{"nx-integration", "1.0.0"}};
    client.initialize(options);
    EXPECT_EQ(bridge->lastOperation, "initialize");
    EXPECT_EQ(bridge->lastRequest, (json{{"logFile", "C:\\logs\\d\xC3\xA9mo.log"},
                                         {"environment", {{"ServerURL", "https://server.example.com/"}}},
                                         {"clientVersions", {{"nx-integration", "1.0.0"}}}}));
}

TEST_F(CppPivClientTest, ArgumentsKeepTheirPlaces) {
    bridge->answer = R"({"result": [{"revisionId": 9007199254740993, "fileId": "id", "createdAt": "t"}]})";
    const auto found = client.findRevision("token", 7, "id", "1", "B", "name", false, true, true, false);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].revisionId, 9007199254740993);
    EXPECT_EQ(found[0].createdAt, "t");
    EXPECT_EQ(bridge->lastRequest, (json{{"accessToken", "token"},
                                         {"workspaceId", 7},
                                         {"fileId", "id"},
                                         {"sourceVersion", "1"},
                                         {"revision", "B"},
                                         {"fileName", "name"},
                                         {"includeDeleted", false},
                                         {"latestOnly", true},
                                         {"isAssembly", true},
                                         {"exactMatch", false}}));

    bridge->answer = R"({"result": {"entries": {"revisionId": "5"}, "errors": ["e1", "e2"]}})";
    cpp_piv::CppPivUploadPayload payload;
    payload.workspaceDirectories = {{7, 70}};
    payload.comment = "c";
    payload.files = {{"p", "n", "i", "r"}};
    const auto result = client.upload("token", payload, true);
    EXPECT_EQ(result.entries, (std::map<std::string, std::string>{{"revisionId", "5"}}));
    EXPECT_EQ(result.errors, (std::vector<std::string>{"e1", "e2"}));
    const json file = {{"path", "p"}, {"fileName", "n"}, {"fileId", "i"}, {"revision", "r"}};
    EXPECT_EQ(bridge->lastRequest, (json{{"accessToken", "token"},
                                         {"replace", true},
                                         {"payload",
                                          {{"workspaceDirectories", json::array({json::array({7, 70})})},
                                           {"workspaceRevisions", json::array()},
                                           {"comment", "c"},
                                           {"files", json::array({file})}}}}));
}

TEST_F(CppPivClientTest, RecordsAreReadMemberByMember) {
    bridge->answer = R"({"result": {"id": 1, "email": "e", "userName": "u", "givenName": "g", "familyName": "f"}})";
    const auto user = client.getCurrentUser("token");
    EXPECT_EQ(user.email + user.userName + user.givenName + user.familyName + user.locale, "eugf");

    bridge->answer = R"({"result": [{"id": -3, "name": "n", "thumbnailUrl": null}, {"id": 4, "thumbnailUrl": "t"}]})";
    const auto workspaces = client.listWorkspaces("token", "");
    ASSERT_EQ(workspaces.size(), 2U);
    EXPECT_EQ(workspaces[0].id, -3);
    EXPECT_EQ(workspaces[0].name, "n");
    EXPECT_FALSE(workspaces[0].thumbnailUrl);
    EXPECT_EQ(workspaces[1].thumbnailUrl, "t");
}

TEST_F(CppPivClientTest, FailuresKeepTheirMessageOrHaveNone) {
    const auto logout = [this] { client.localAuthFlowLogout(); };
    bridge->answer = R"({"error": "The service is closed."})";
    EXPECT_EQ(failureOf(logout), "The service is closed.");
    bridge->answer = R"({"error": null})";
    EXPECT_EQ(failureOf(logout), "unknown");
    for (const char* nonsense : {"", "[]", "{}", R"({"result": 5})", R"({"error": 5})"}) {
        bridge->answer = nonsense;
        EXPECT_EQ(failureOf(logout).rfind("The service's answer to the operation logout makes no sense: ", 0), 0U)
            << nonsense << ": " << failureOf(logout);
    }
}

TEST_F(CppPivClientTest, TheLibrarysLogGoesToTheLoggerAtItsLevel) {
    bridge->answer = R"({"result": ""})";
    client.localAuthFlowLogout();
    EXPECT_EQ(logger->all(),
              "debug: [cpp-piv] logout\ninfo: [cpp-piv] logout\nwarning: [cpp-piv] logout\nerror: [cpp-piv] logout\n");
    const auto silent = std::make_shared<ScriptedBridge>();
    EXPECT_NO_THROW(cpp_piv::CppPivClient(silent, nullptr));
    EXPECT_FALSE(silent->sink);
}

TEST(DynamicCppPivBridge, NamesALibraryThatCannotBeLoaded) {
    const std::string message = failureOf([] { cpp_piv::DynamicCppPivBridge("missing folder/gopiv.dll"); });
    EXPECT_EQ(message.rfind("The service library \"missing folder/gopiv.dll\" cannot be loaded: ", 0), 0U) << message;
}

}  // namespace
