#include <boost/asio/ip/tcp.hpp>
#include <chrono>

#include "service_fixture.h"

namespace {

using devkit::httpGet;
using devkit_test::failureOf;
using devkit_test::originOf;
using nlohmann::json;

class MisbehaviourTest : public devkit_test::ServiceTest {
 protected:
    void misbehave(const std::string& operation, const json& entry) const {
        describe(json{{"misbehave", {{operation, json::array({entry})}}}}.dump());
    }

    /// What the service on `port` says first to a request of this head.
    static std::string statusLine(const std::string& port, const std::string& head) {
        boost::asio::ip::tcp::iostream connection("127.0.0.1", port);
        connection << head << "\r\n\r\n" << std::flush;
        std::string status;
        std::getline(connection, status);
        return status;
    }
};

TEST_F(MisbehaviourTest, OfEachOperationOnItsCall) {
    const auto client = newClient();
    const std::string token = signIn(*client);
    const auto file = localFile("bolt.prt", "bytes");
    const std::vector<std::pair<std::string, std::function<void()>>> operations = {
        {"authorize", [&] { client->localAuthFlowAuthorize(); }},
        {"currentUser", [&] { client->getCurrentUser(token); }},
        {"listWorkspaces", [&] { client->listWorkspaces(token, ""); }},
        {"findRevision", [&] { client->findRevision(token, 1, "id", "1", "A", "", false, true, false, true); }},
        {"rootDirectory", [&] { client->getRootDirectory(token, 1); }},
        {"upload", [&] { client->upload(token, payload({file}), false); }},
        {"logout", [&] { client->localAuthFlowLogout(); }}};
    for (const auto& [operation, perform] : operations) {
        if (operation != "logout") {
            misbehave(operation, {{"error", "Not today."}});
            EXPECT_EQ(failureOf(perform), "Not today.") << operation;
            misbehave(operation, {{"emptyError", true}});
            EXPECT_EQ(failureOf(perform), "unknown") << operation;
            misbehave(operation, {{"call", 99}, {"error", "Later."}});
            EXPECT_EQ(failureOf(perform), "nothing") << operation;
        }
        misbehave(operation, {{"disconnect", true}});
        EXPECT_EQ(failureOf(perform), "The connection to the Pivra service was lost.") << operation;
    }
}

TEST_F(MisbehaviourTest, CountsCallsFromTheFirst) {
    const auto client = newClient();
    describe(R"({"misbehave": {"authorize": [{"call": 1, "error": "first"}, {"call": 3, "emptyAddress": true}]}})");
    EXPECT_EQ(failureOf([&] { client->localAuthFlowAuthorize(); }), "first");
    EXPECT_NE(client->localAuthFlowAuthorize(), "");
    EXPECT_EQ(client->localAuthFlowAuthorize(), "");
    EXPECT_NE(client->localAuthFlowAuthorize(), "");
}

TEST_F(MisbehaviourTest, OfCompleteComesAfterTheBrowser) {
    const auto client = newClient();
    describe(R"({"misbehave": {"complete": [{"call": 1, "emptyToken": true}, {"call": 2, "error": "Too late."}]}})");
    EXPECT_EQ(signIn(*client), "");
    EXPECT_EQ(failureOf([&] { signIn(*client); }), "Too late.");
}

TEST_F(MisbehaviourTest, OfUploads) {
    const auto client = newClient();
    const std::string token = signIn(*client);
    const auto upload = [&] {
        return client->upload(token, payload({localFile("a.prt", "a"), localFile("b.prt", "b")}), false);
    };
    misbehave("upload", {{"errors", {"Virus found.", "Quota."}}});
    EXPECT_EQ(upload().errors, (std::vector<std::string>{"Virus found.", "Quota."}));
    EXPECT_EQ(upload().entries.at("revisionId"), "1002");
    misbehave("upload", {{"omitLink", true}});
    EXPECT_EQ(upload().entries.count("url"), 0U);
    misbehave("upload", {{"wrongLink", true}});
    const auto misled = upload();
    EXPECT_EQ(misled.entries.at("revisionId"), "1004");
    EXPECT_NE(misled.entries.at("url").find("revisionId=1005"), std::string::npos);

    misbehave("upload", {{"partial", 1}});
    EXPECT_EQ(failureOf(upload), "The connection to the Pivra service was lost after 1 of 2 files.");
    EXPECT_EQ(stored("index.json")["revisions"].size(), 4U);
    misbehave("upload", {{"disconnect", true}});
    EXPECT_NE(failureOf(upload), "nothing");
    EXPECT_EQ(stored("index.json")["revisions"].size(), 5U);

    misbehave("upload", {{"delayMs", 60}});
    const auto start = std::chrono::steady_clock::now();
    upload();
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(60));
}

TEST_F(MisbehaviourTest, ABrokenDescriptionIsAnError) {
    const auto client = newClient();
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"{", "service.json of the development service cannot be read: "},
        {"[]", "service.json of the development service: the file must hold an object."},
        {R"({"users": 1})", "service.json of the development service: \"users\" is not known."},
        {R"({"user": []})", "service.json of the development service: \"user\" must be of the type object."},
        {R"({"workspaces": [{"name": "x"}]})",
         "service.json of the development service: each workspace needs an integer \"id\"."},
        {R"({"revisions": [{"fileId": "x"}]})",
         "service.json of the development service: each of \"revisions\" needs \"workspaceId\" and \"fileId\"."},
        {R"({"misbehave": {"uplaod": []}})",
         "service.json of the development service: \"misbehave\" names no operation \"uplaod\"."},
        {R"({"misbehave": {"upload": [{"emptyToken": true}]}})",
         "service.json of the development service: an entry of \"misbehave\" for \"upload\" has \"emptyToken\", which "
         "means nothing there."},
        {R"({"misbehave": {"upload": [{"delayMs": "5"}]}})",
         "service.json of the development service: an entry of \"misbehave\" for \"upload\" has a wrong value for "
         "\"delayMs\": \"5\"."}};
    for (const auto& [text, message] : cases) {
        describe(text);
        EXPECT_EQ(failureOf([&] { client->localAuthFlowAuthorize(); }).substr(0, message.size()), message);
    }
}

TEST_F(MisbehaviourTest, OtherAddressesAreNotReached) {
    const std::string sentence = "This development library reaches only its embedded development service:";
    for (const char* address : {"https://server.example.com/", "http://127.0.0.1:80/", "http://127.0.0.1:x/?data=a",
                                "http://127.0.0.1:99999/?data=a", "http://127.0.0.1:0/?data=%4",
                                "http://127.0.0.1:0/?data=", "http://0.0.0.0:0/?data=a", ""}) {
        cpp_piv::CppPivInitializeOptions elsewhere = options();
        (*elsewhere.environment)["ServerURL"] = address;
        const auto client = newClient(elsewhere);
        EXPECT_EQ(failureOf([&] { client->localAuthFlowAuthorize(); }).substr(0, sentence.size()), sentence) << address;
    }
}

TEST_F(MisbehaviourTest, OfOtherSitesReachesNothing) {
    const auto client = newClient();
    const std::string address = client->localAuthFlowAuthorize();
    const std::string host = originOf(address).substr(std::string("http://").size());
    const std::string port = host.substr(host.rfind(':') + 1);
    const std::string accepted = "HTTP/1.1 200 OK\r";
    for (const auto& [headers, status] : std::vector<std::pair<std::string, std::string>>{
             {"Host: " + host, accepted},
             {"Host: " + host + "\r\nOrigin: http://" + host, accepted},
             {"Host: " + host + "\r\nOrigin: http://other.example", "HTTP/1.1 403 Forbidden\r"},
             {"Host: " + host + "\r\nOrigin: null", "HTTP/1.1 403 Forbidden\r"},
             {"Host: other.example:" + port, "HTTP/1.1 421 Misdirected Request\r"},
             {"Host: 127.0.0.1", "HTTP/1.1 421 Misdirected Request\r"},
             {"Accept: text/html", "HTTP/1.1 421 Misdirected Request\r"}}) {
        EXPECT_EQ(statusLine(port, "GET / HTTP/1.1\r\n" + headers), status) << headers;
    }
    // Every address of this computer would answer, had the service not listened on one alone.
    boost::asio::ip::tcp::iostream elsewhere("127.0.0.2", port);
    EXPECT_FALSE(elsewhere);
}

TEST_F(MisbehaviourTest, OfBrowsersStopsNothing) {
    auto client = newClient();
    const std::string origin = originOf(client->localAuthFlowAuthorize());
    const std::string port = origin.substr(origin.rfind(':') + 1);
    const std::string tooLong(20'000, 'x');
    EXPECT_EQ(httpGet(origin + "/nowhere").status, 404);
    EXPECT_EQ(httpGet(origin + "/models?revisionId=%zz").status, 404);
    failureOf([&] { devkit::httpPost(origin + "/authorize", {{"ticket", tooLong}}); });
    failureOf([&] { httpGet(origin + "/?" + tooLong); });
    EXPECT_EQ(statusLine(port, "PUT / HTTP/1.1\r\nHost: 127.0.0.1:" + port), "HTTP/1.1 405 Method Not Allowed\r");

    boost::asio::ip::tcp::iostream idle("127.0.0.1", port);
    boost::asio::ip::tcp::iostream halfSent("127.0.0.1", port);
    halfSent << "GET / HT" << std::flush;
    EXPECT_EQ(httpGet(origin + "/").status, 200);
    client.reset();
    EXPECT_EQ(halfSent.get(), std::char_traits<char>::eof());

    cpp_piv::CppPivInitializeOptions fixed = options();
    std::string& address = (*fixed.environment)["ServerURL"].get_ref<std::string&>();
    address.replace(address.find(":0/"), 2, ":" + port);
    const auto first = newClient(fixed);
    EXPECT_EQ(originOf(first->localAuthFlowAuthorize()), origin);
    const auto second = newClient(fixed);
    EXPECT_EQ(failureOf([&] {
                  second->localAuthFlowAuthorize();
              }).rfind("The embedded development service cannot listen on 127.0.0.1:" + port + ": ", 0),
              0U);
}

}  // namespace
