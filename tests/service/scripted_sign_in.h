// A sign-in without service, browser or threads: every answer is scripted, and the background task runs when told to.
#pragma once

#include "service/auth_session.h"

#include <functional>
#include <string>
#include <utility>

namespace test_support {

struct ScriptedSignIn {
    auth::AuthClientCallbacks client;
    auth::AuthPlatformCallbacks system;
    std::function<void()> background;

    ScriptedSignIn() {
        client.authorize = [] { return "https://login/"; };
        client.complete = [] { return cpp_piv::CppPivLocalAuthTokens{"token", "refresh", "id"}; };
        client.currentUser = [](const std::string& accessToken) {
            cpp_piv::CppPivUser user;
            user.email = accessToken + "@pivra.example";
            return user;
        };
        system.openBrowser = [](const std::string&) {};
        system.runInBackground = [this](std::function<void()> task) { background = std::move(task); };
    }

    auth::SignInStartResult start(auth::AuthSession& session) { return session.startSignIn(client, system); }
    void signIn(auth::AuthSession& session) {
        start(session);
        background();
    }
};

}  // namespace test_support
