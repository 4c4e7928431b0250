#include <boost/asio/ip/tcp.hpp>
#include <chrono>
#include <future>
#include <map>
#include <numeric>
#include <thread>

#include "service_fixture.h"

namespace {

using devkit::answerSignIn;
using devkit::httpGet;
using devkit_test::failureOf;
using devkit_test::originOf;
using nlohmann::json;

class GopivTest : public devkit_test::ServiceTest {
 protected:
    void misbehave(const std::string& operation, const json& entry) const {
        describe(json{{"misbehave", {{operation, json::array({entry})}}}}.dump());
    }

    /// Begins to wait for the sign-in of `address`; returns once the service knows of it.
    static std::future<std::string> waitInBackground(cpp_piv::CppPivClient& client, const std::string& address) {
        std::packaged_task<std::string()> wait(
            [&client] { return failureOf([&] { client.localAuthFlowComplete(); }); });
        auto waiting = wait.get_future();
        std::thread(std::move(wait)).detach();
        while (json::parse(httpGet(originOf(address) + "/dev/status").body)["activeCalls"] == 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return waiting;
    }
};

TEST_F(GopivTest, SignsInThroughTheBrowser) {
    describe(R"({"user": {"email": "ada@example.com", "givenName": "Ada <b>", "familyName": "L\u00f8ve"},
                 "workspaces": [{"id": 2, "name": "Two", "rootDirectoryId": 22}]})");
    const auto client = newClient();
    EXPECT_EQ(failureOf([&] { client->localAuthFlowComplete(); }), "No sign-in has been started.");
    const std::string address = client->localAuthFlowAuthorize();
    EXPECT_NE(httpGet(address).body.find("Ada &lt;b&gt; L\xC3\xB8ve (ada@example.com)"), std::string::npos);
    EXPECT_NE(answerSignIn(address, true).body.find("You are signed in"), std::string::npos);
    const std::string token = client->localAuthFlowComplete().accessToken;
    EXPECT_EQ(client->getCurrentUser(token).givenName, "Ada <b>");
    EXPECT_EQ(client->getRootDirectory(token, 2).id, 22);
    EXPECT_EQ(failureOf([&] { client->localAuthFlowComplete(); }), "This sign-in has been completed already.");

    EXPECT_EQ(httpGet(client->localAuthFlowLogout()).status, 200);
    EXPECT_EQ(failureOf([&] { client->listWorkspaces(token, ""); }), "The access token is not valid.");
}

TEST_F(GopivTest, WaitingEndsWithTheClient) {
    auto client = newClient();
    const std::string address = client->localAuthFlowAuthorize();
    auto waiting = waitInBackground(*client, address);
    boost::asio::ip::tcp::iostream halfSent("127.0.0.1", address.substr(17, address.find('/', 17) - 17));
    halfSent << "GET / HT" << std::flush;
    EXPECT_EQ(httpGet(originOf(address) + "/").status, 200);
    client.reset();
    EXPECT_EQ(waiting.get(), "The service client was closed before the sign-in ended.");
    EXPECT_EQ(halfSent.get(), std::char_traits<char>::eof());
    EXPECT_ANY_THROW(httpGet(address));
}

TEST_F(GopivTest, StoresEachFileByteForByte) {
    std::string everyByte(256, '\0');
    std::iota(everyByte.begin(), everyByte.end(), '\0');
    const auto client = newClient();
    const auto result = client->upload(signIn(*client),
                                       payload({localFile("bolt.prt", everyByte, "id-1"),
                                                localFile("\xC3\xA9\xE6\x97\xA5 & (1).prt", "abc", "id-2"),
                                                localFile("bolt.prt", std::string(1'000'000, 'a'), "id-3"),
                                                localFile("revision.json", "", "id-4"),
                                                {"", "nothing to send", "id-5", "A"}}),
                                       false);
    ASSERT_EQ(result.entries.at("revisionId"), "1001");
    const std::filesystem::path revision = "revisions/1001";
    EXPECT_EQ(stored(revision / "bolt.prt"), everyByte);
    EXPECT_EQ(stored(revision / platform::pathFromUtf8("\xC3\xA9\xE6\x97\xA5 & (1).prt")), "abc");
    EXPECT_EQ(stored(revision / "2" / "bolt.prt").size(), 1'000'000U);
    EXPECT_EQ(stored(revision / "2" / "revision.json"), "");

    std::vector<std::string> digests;
    const json upload = storedJson("uploads.jsonl");
    for (const json& file : upload["files"]) {
        digests.push_back(file["sha256"]);
    }
    EXPECT_EQ(digests, (std::vector<std::string>{"40aff2e9d2d8922e47afd4648e6967497158785fbd1da870e7110266bf944880",
                                                 "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",
                                                 "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0",
                                                 "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"}));
    EXPECT_NE(httpGet(result.entries.at("url")).body.find("<td class=\"number\">1,000,000</td>"), std::string::npos);
}

TEST_F(GopivTest, FailedUploadsLeaveNoRevision) {
    const auto client = newClient();
    const std::string token = signIn(*client);
    const auto good = localFile("bolt.prt", "bytes");
    const auto failure = [&](const cpp_piv::CppPivUploadPayload& asked) {
        return failureOf([&] { client->upload(token, asked, false); });
    };
    auto elsewhere = payload({good});
    elsewhere.workspaceDirectories = {{1, 5}};
    EXPECT_EQ(failure(elsewhere), "Workspace 1 has no directory 5.");
    EXPECT_EQ(failure(payload({{"", "bolt.prt", "id", "A"}})), "The upload has no files.");
    EXPECT_EQ(failure(payload({good, {"missing.prt", "missing.prt", "id", "A"}})),
              "The file missing.prt cannot be read.");
    EXPECT_EQ(failure(payload({{good.path, "../bolt.prt", "id", "A"}})),
              "\"../bolt.prt\" is no name for an uploaded file.");
    misbehave("upload", {{"partial", 1}});
    EXPECT_EQ(failure(payload({good, good})), "The connection to the Pivra service was lost after 1 of 2 files.");
    EXPECT_EQ(client->findRevision(token, 1, "file-1", "", "", "", false, false, false, true).size(), 0U);
    EXPECT_FALSE(std::filesystem::exists(data / "uploads.jsonl"));

    misbehave("upload", {{"disconnect", true}});
    EXPECT_EQ(failure(payload({good})), "The connection to the Pivra service was lost.");
    EXPECT_EQ(client->findRevision(token, 1, "file-1", "", "", "", false, false, false, true).size(), 1U);
}

TEST_F(GopivTest, ABrokenDescriptionIsAnError) {
    const auto client = newClient();
    const std::string unreadable = "service.json of the development service cannot be read: ";
    const std::string wrong = "service.json of the development service: ";
    for (const auto& [text, message] : std::map<std::string, std::string>{
             {"{", unreadable},
             {R"({"misbehave": {"upload": [{"delayMs": "5"}]}})", unreadable},
             {R"({"users": 1})", wrong + "\"users\" is not known."},
             {R"({"misbehave": {"uplaod": []}})", wrong + "\"misbehave\" names no operation \"uplaod\"."},
             {R"({"misbehave": {"upload": [{"eror": "x"}]}})",
              wrong + "an entry of \"misbehave\" for \"upload\" has \"eror\", which means nothing there."}}) {
        describe(text);
        EXPECT_TRUE(failureOf([&] { client->localAuthFlowAuthorize(); }).starts_with(message)) << text;
    }
}

}  // namespace
