// The clean-up at the end of the host's session, in the built library with its service beside it.
#include "library.h"

#include <event_loop.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <http_client.h>
#include <support/plugin_folder.h>
#include <support/scripted_host.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class CleanUp : public testing::Test {
 protected:
    CleanUp() {
        fs::copy(PIVRA_LIBRARY, folder.path());
        fs::copy(GOPIV_LIBRARY, folder.path());
        folder.writeProperties("pivra_nx_log_directory = logs\npivra_nx_server_url = http://127.0.0.1:0/?data=" +
                               devkit::percentEncode((folder.path() / "service").string()) + "\n");
        devkit::EventLoop::instance().setShell([this](const std::string& address) { return opened = address, 33; });
        host.user = [](test_support::OpenDialog& dialog) {
            if (dialog.name() == "start.dlx") dialog.press("signInButton");
        };
    }
    ~CleanUp() override { devkit::EventLoop::instance().setShell({}); }

    /// Waits until the worker of a sign-in that was answered has fetched its result and ended.
    void waitForWorker() const {
        const auto base = opened.substr(0, opened.find('/', std::string("http://").size()));
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (nlohmann::json::parse(devkit::httpGet(base + "/dev/status").body).at("activeCalls") != 0) {
            ASSERT_LT(std::chrono::steady_clock::now(), end);
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(200));  // it hands in its result
    }

    test_support::PluginFolder folder;
    test_support::ScriptedHost host;
    std::string opened;
};

TEST_F(CleanUp, DropsASignInThatIsAnsweredLater) {
    const Plugin plugin(folder.path() / fs::path(PIVRA_LIBRARY).filename());
    plugin.run();
    plugin.cleanUp();
    devkit::answerSignIn(opened, true);
    waitForWorker();
    plugin.run();
    EXPECT_THAT(host.dialogs, ElementsAre("start.dlx", "start.dlx"));

    // Without a clean-up the answer counts, as soon as the worker has handed it in.
    devkit::answerSignIn(opened, true);
    host.user = [](test_support::OpenDialog&) {};
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (host.dialogs.back() != "pivraGui.dlx" && std::chrono::steady_clock::now() < end) plugin.run();
    EXPECT_EQ(host.dialogs.back(), "pivraGui.dlx");
    plugin.cleanUp();
}

}  // namespace
