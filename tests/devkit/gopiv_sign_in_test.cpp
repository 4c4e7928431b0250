#include <platform/text_encoding.h>

#include <future>
#include <thread>

#include "service_fixture.h"

namespace {

using devkit::answerSignIn;
using devkit::fieldValue;
using devkit::httpGet;
using devkit::httpPost;
using devkit_test::failureOf;
using devkit_test::originOf;
using nlohmann::json;

class SignInTest : public devkit_test::ServiceTest {
 protected:
    /// Waits until the service of `address` has that many operations under way.
    static void awaitActiveCalls(const std::string& address, int number) {
        while (json::parse(httpGet(originOf(address) + "/dev/status").body)["activeCalls"] != number) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }

    static std::future<std::string> completeInBackground(cpp_piv::CppPivClient& client) {
        return std::async(std::launch::async, [&client] {
            std::string token;
            const std::string failure = failureOf([&] { token = client.localAuthFlowComplete().accessToken; });
            return failure == "nothing" ? token : failure;
        });
    }
};

TEST_F(SignInTest, LeadsThroughTheBrowserToAUser) {
    describe(R"({"user": {"email": "ada@example.com", "givenName": "Ada <b>", "familyName": "L\u00f8ve"}})");
    const auto client = newClient();
    const std::string address = client->localAuthFlowAuthorize();
    const devkit::Fields query = devkit::parseFields(address.substr(address.find('?') + 1));
    EXPECT_EQ(address.rfind(originOf(address) + "/authorize?", 0), 0U);
    EXPECT_EQ(fieldValue(query, "client_id"), "0123456789abcdef0123456789abcdef");
    EXPECT_EQ(fieldValue(query, "redirect_uri"), originOf(address) + "/callback");

    const auto page = httpGet(address);
    EXPECT_EQ(page.contentType, "text/html; charset=utf-8");
    EXPECT_NE(page.body.find("Ada &lt;b&gt; L\xC3\xB8ve (ada@example.com)"), std::string::npos);
    EXPECT_EQ(page.body.find(fieldValue(query, "state")), std::string::npos);
    EXPECT_NE(answerSignIn(address, true).body.find("You are signed in"), std::string::npos);

    const auto tokens = client->localAuthFlowComplete();
    EXPECT_EQ(tokens.accessToken.size(), 64U);
    EXPECT_NE(tokens.accessToken, tokens.refreshToken);
    EXPECT_EQ(client->getCurrentUser(tokens.accessToken).givenName, "Ada <b>");
    EXPECT_EQ(failureOf([&] { client->getCurrentUser("made up"); }), "The access token is not valid.");
    EXPECT_EQ(failureOf([&] { client->localAuthFlowComplete(); }), "This sign-in has been completed already.");

    EXPECT_EQ(httpGet(client->localAuthFlowLogout()).status, 200);
    EXPECT_EQ(failureOf([&] { client->listWorkspaces(tokens.accessToken, ""); }), "The access token is not valid.");
    describe(R"({"logoutAddress": false})");
    EXPECT_EQ(client->localAuthFlowLogout(), "");
}

TEST_F(SignInTest, CanBeRefused) {
    const auto client = newClient();
    EXPECT_EQ(failureOf([&] { client->localAuthFlowComplete(); }), "No sign-in has been started.");
    EXPECT_NE(answerSignIn(client->localAuthFlowAuthorize(), false).body.find("Sign-in refused"), std::string::npos);
    EXPECT_EQ(failureOf([&] { client->localAuthFlowComplete(); }), "Sign-in was refused in the browser.");
}

TEST_F(SignInTest, ForgedAndRepeatedAnswersChangeNothing) {
    const auto client = newClient();
    const std::string address = client->localAuthFlowAuthorize();
    const std::string origin = originOf(address);
    devkit::Fields query = devkit::parseFields(address.substr(address.find('?') + 1));
    const std::string state = fieldValue(query, "state");
    for (const char* changed : {"state", "code_challenge", "client_id"}) {
        devkit::Fields forged = query;
        forged[changed] = "other";
        EXPECT_EQ(httpGet(origin + "/authorize?" + devkit::encodeFields(forged)).status, 400) << changed;
    }

    const devkit::Fields form = {{"ticket", devkit::hiddenField(httpGet(address).body, "ticket")},
                                 {"decision", "accept"}};
    EXPECT_EQ(httpPost(origin + "/authorize", {{"ticket", "other"}, {"decision", "accept"}}).status, 400);
    EXPECT_EQ(httpPost(origin + "/authorize", {{"ticket", fieldValue(form, "ticket")}}).status, 400);
    EXPECT_EQ(httpGet(origin + "/callback?error=access_denied&state=" + state).status, 400);
    const auto redirection = httpPost(origin + "/authorize", form);
    EXPECT_EQ(httpPost(origin + "/authorize", form).status, 400);
    EXPECT_EQ(httpGet(address).status, 400);
    EXPECT_EQ(httpGet(origin + "/callback?code=other&state=" + state).status, 400);
    EXPECT_EQ(httpGet(origin + "/callback?error=access_denied&state=" + state).status, 400);
    EXPECT_EQ(httpGet(redirection.location).status, 200);
    EXPECT_EQ(httpGet(redirection.location).status, 400);
    EXPECT_EQ(client->localAuthFlowComplete().accessToken.size(), 64U);
}

TEST_F(SignInTest, AReplacedOneWaitsForItsOwnPage) {
    const auto client = newClient();
    const std::string firstAddress = client->localAuthFlowAuthorize();
    auto first = completeInBackground(*client);
    awaitActiveCalls(firstAddress, 1);
    const std::string secondAddress = client->localAuthFlowAuthorize();
    auto second = completeInBackground(*client);
    awaitActiveCalls(secondAddress, 2);

    answerSignIn(secondAddress, true);
    EXPECT_EQ(second.get().size(), 64U);
    const json status = json::parse(httpGet(originOf(firstAddress) + "/dev/status").body);
    EXPECT_EQ(status["flows"],
              json::parse(R"([{"number": 1, "state": "waiting"}, {"number": 2, "state": "completed"}])"));
    EXPECT_EQ(status["operations"]["complete"], json::parse(R"({"active": 1, "completed": 1})"));
    answerSignIn(firstAddress, false);
    EXPECT_EQ(first.get(), "Sign-in was refused in the browser.");
}

TEST_F(SignInTest, WaitingEndsWithTheClient) {
    auto client = newClient();
    const std::string address = client->localAuthFlowAuthorize();
    auto waiting = completeInBackground(*client);
    awaitActiveCalls(address, 1);
    client.reset();
    EXPECT_EQ(waiting.get(), "The service client was closed before the sign-in ended.");
    EXPECT_ANY_THROW(httpGet(address));
}

TEST_F(SignInTest, AProcessEndsWithAClientInUse) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static const auto held = newClient();
            held->localAuthFlowAuthorize();
            static const auto waitedFor = newClient();
            const std::string address = waitedFor->localAuthFlowAuthorize();
            std::thread([client = waitedFor] { client->localAuthFlowComplete(); }).detach();
            awaitActiveCalls(address, 1);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(SignInTest, ClientsSideBySideKnowNothingOfEachOther) {
    const auto one = newClient();
    const auto other = newClient();
    const std::string oneAddress = one->localAuthFlowAuthorize();
    const std::string otherAddress = other->localAuthFlowAuthorize();
    EXPECT_NE(originOf(oneAddress), originOf(otherAddress));
    EXPECT_EQ(httpGet(originOf(otherAddress) + oneAddress.substr(originOf(oneAddress).size())).status, 400);
    answerSignIn(oneAddress, true);
    answerSignIn(otherAddress, false);
    const std::string token = one->localAuthFlowComplete().accessToken;
    EXPECT_EQ(failureOf([&] { other->localAuthFlowComplete(); }), "Sign-in was refused in the browser.");
    EXPECT_EQ(failureOf([&] { other->listWorkspaces(token, ""); }), "The access token is not valid.");
    other->localAuthFlowLogout();
    EXPECT_EQ(one->listWorkspaces(token, "").size(), 1U);
}

TEST_F(SignInTest, LogsHoldNoSecrets) {
    const auto logger = std::make_shared<devkit_test::RecordingLogger>();
    cpp_piv::CppPivInitializeOptions logged = options();
    const auto logFile = folder.writeFile("library.log", "");
    logged.logFile = platform::utf8FromPath(logFile);
    logged.logLevel = "debug";
    const auto client = newClient(logged, logger);

    const std::string address = client->localAuthFlowAuthorize();
    const std::string ticket = devkit::hiddenField(httpGet(address).body, "ticket");
    const auto redirection = httpPost(originOf(address) + "/authorize", {{"ticket", ticket}, {"decision", "accept"}});
    httpGet(redirection.location);
    const auto tokens = client->localAuthFlowComplete();
    failureOf([&] { client->getRootDirectory(tokens.accessToken, 99); });
    client->localAuthFlowLogout();

    const std::string file = test_support::readFile(logFile);
    EXPECT_NE(file.find("[DEBUG] Page: GET /callback 200\n"), std::string::npos) << file;
    EXPECT_NE(logger->all().find("warning: [cpp-piv] rootDirectory failed: There is no workspace 99.\n"),
              std::string::npos)
        << logger->all();
    const devkit::Fields query = devkit::parseFields(redirection.location.substr(redirection.location.find('?') + 1));
    for (const std::string& secret : {tokens.accessToken, tokens.refreshToken, tokens.idToken, ticket,
                                      fieldValue(query, "state"), fieldValue(query, "code")}) {
        ASSERT_EQ(secret.size(), 64U);
        EXPECT_EQ((file + logger->all()).find(secret), std::string::npos);
    }
}

}  // namespace
