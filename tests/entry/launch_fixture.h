// A run of the plug-in in the stand-in host, with a session that tests sign in to by hand.
#pragma once

#include <export/session_temp_directories.h>
#include <service/scripted_sign_in.h>
#include <support/plugin_folder.h>
#include <support/scripted_host.h>

#include <gtest/gtest.h>
#include <filesystem>
#include <iterator>
#include <memory>

class Launch : public testing::Test {
 protected:
    // One folder for all: the process keeps the temporary folder that it found first.
    static void SetUpTestSuite() { suiteFolder() = std::make_unique<test_support::PluginFolder>(); }
    static void TearDownTestSuite() { suiteFolder().reset(); }

    Launch() { folder.writeProperties("pivra_nx_log_directory = logs\n"); }
    ~Launch() override {
        session.shutdown();
        session.signOut({}, {});
        pivra::cleanupSessionTempDirectory();
    }

    std::size_t tempFolders() const {
        const std::filesystem::directory_iterator entries(folder.temp());
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }

    test_support::PluginFolder& folder = *suiteFolder();
    test_support::ScriptedHost host;
    auth::AuthSession& session = auth::AuthSession::instance();
    test_support::ScriptedSignIn scripted;

 private:
    static std::unique_ptr<test_support::PluginFolder>& suiteFolder() {
        static std::unique_ptr<test_support::PluginFolder> folder;
        return folder;
    }
};
