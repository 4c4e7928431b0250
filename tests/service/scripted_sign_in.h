// A sign-in without service, browser or threads: every answer is scripted, and the background task runs when told to.
#pragma once

#include "service/auth_session.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace test_support {

struct ScriptedSignIn {
    auth::AuthClientCallbacks client;
    auth::AuthPlatformCallbacks system;
    std::vector<std::string> calls;  ///< in order, with their argument
    std::function<void()> background;

    explicit ScriptedSignIn(const std::string& token = "token") {
        client.authorize = [this] { return note("authorize", "https://login/"), "https://login/"; };
        client.complete = [this, token] {
            note("complete");
            return cpp_piv::CppPivLocalAuthTokens{token, "refresh", "id"};
        };
        client.currentUser = [this](const std::string& accessToken) {
            note("user", accessToken);
            cpp_piv::CppPivUser user;
            user.email = accessToken + "@pivra.example";
            return user;
        };
        client.logout = [this] { return note("logout"), "https://bye/"; };
        system.openBrowser = [this](const std::string& address) { note("open", address); };
        system.runInBackground = [this](std::function<void()> task) { background = std::move(task); };
    }

    auth::SignInStartResult start(auth::AuthSession& session) { return session.startSignIn(client, system); }
    void signIn(auth::AuthSession& session) {
        start(session);
        background();
    }

 private:
    void note(const std::string& call, const std::string& argument = "") {
        calls.push_back(argument.empty() ? call : call + " " + argument);
    }
};

}  // namespace test_support
