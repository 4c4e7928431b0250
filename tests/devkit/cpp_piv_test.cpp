#include <cpp_piv/client.h>

#include "service_fixture.h"

namespace {

using devkit_test::failureOf;
using nlohmann::json;

/// Answers every operation with the same text and keeps what was asked.
struct ScriptedBridge : cpp_piv::CppPivBridgeInterface {
    std::string call(const std::string& operation, const std::string& request) override {
        lastRequest = json::parse(request);
        for (const char* level : {"debug", "info", "warning", "error"}) {
            sink(level, operation);
        }
        return answer;
    }
    void setLogSink(std::function<void(const std::string&, const std::string&)> newSink) override { sink = newSink; }

    std::string answer;
    json lastRequest;
    std::function<void(const std::string&, const std::string&)> sink;
};

struct CppPivClientTest : testing::Test {
    std::shared_ptr<ScriptedBridge> bridge = std::make_shared<ScriptedBridge>();
    std::shared_ptr<devkit_test::RecordingLogger> logger = std::make_shared<devkit_test::RecordingLogger>();
    cpp_piv::CppPivClient client{bridge, logger};
};

TEST_F(CppPivClientTest, ArgumentsAndRecordsKeepTheirPlaces) {
    bridge->answer = R"({"result": [{"revisionId": 9007199254740993, "fileId": "id"}]})";
    const auto found = client.findRevision("token", 7, "id", "1", "B", "name", false, true, true, false);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].revisionId, 9007199254740993);
    EXPECT_EQ(bridge->lastRequest, json::parse(R"({"accessToken": "token", "workspaceId": 7, "fileId": "id",
        "sourceVersion": "1", "revision": "B", "fileName": "name", "includeDeleted": false, "latestOnly": true,
        "isAssembly": true, "exactMatch": false})"));

    bridge->answer = R"({"result": {"entries": {"revisionId": "5"}, "errors": ["e1"]}})";
    cpp_piv::CppPivUploadPayload payload;
    payload.workspaceDirectories = {{7, 70}};
    payload.comment = "c";
    payload.files = {{"p", "n", "i", "r"}};
    const auto result = client.upload("token", payload, true);
    EXPECT_EQ(result.entries.at("revisionId") + result.errors.at(0), "5e1");
    EXPECT_EQ(bridge->lastRequest, json::parse(R"({"accessToken": "token", "replace": true, "payload": {
        "workspaceDirectories": [[7, 70]], "workspaceRevisions": [], "comment": "c",
        "files": [{"path": "p", "fileName": "n", "fileId": "i", "revision": "r"}]}})"));
}

TEST_F(CppPivClientTest, FailuresKeepTheirMessageOrHaveNone) {
    const auto logout = [this] { client.localAuthFlowLogout(); };
    bridge->answer = R"({"error": "The service is closed."})";
    EXPECT_EQ(failureOf(logout), "The service is closed.");
    bridge->answer = R"({"error": null})";
    EXPECT_EQ(failureOf(logout), "unknown");
    for (const char* nonsense : {"", "{}", R"({"result": 5})"}) {
        bridge->answer = nonsense;
        EXPECT_TRUE(failureOf(logout).starts_with("The service's answer to the operation logout makes no sense: "));
    }
    EXPECT_TRUE(logger->lines.starts_with(
        "debug: [cpp-piv] logout\ninfo: [cpp-piv] logout\nwarning: [cpp-piv] logout\nerror: [cpp-piv] logout\n"));
}

}  // namespace
