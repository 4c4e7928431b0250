#include <devkit/gate.h>
#include <devkit/session.h>
#include <support/plugin_folder.h>
#include <support/scripted_host.h>
#include <ui/help_context.h>
#include <ui/start_dialog.h>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class HelpContext : public testing::Test {
 protected:
    HelpContext() { folder.startLogging(); }

    /// Without the line about the log level.
    std::vector<std::string> logLines() const {
        auto lines = folder.logLines();
        lines.erase(lines.begin());
        return lines;
    }
    void writeMap() { folder.writeFile("pivrahelp.map", "pivrahelp"); }
    static const std::vector<std::string>& contexts() { return devkit::Session::instance().helpContexts; }
    // The path of the map is the process's, taken at the first push.
    static testing::Matcher<std::string> mapWarning(int status) {
        return testing::AllOf(testing::StartsWith("[WARNING] [Pivra] UF_HELP_load_map_file failed for "),
                              testing::EndsWith("pivrahelp.map with status " + std::to_string(status)));
    }
    static void fail(const char* call, int status) { devkit::Gate::instance().addFault({call, 1, status}); }

    test_support::PluginFolder folder;
    test_support::ScriptedHost host;
};

TEST_F(HelpContext, IsTheDialogsWhileItIsOpen) {
    writeMap();
    host.user = [](test_support::OpenDialog&) { EXPECT_THAT(contexts(), ElementsAre("pivrahelp")); };
    ui::showStartDialog([] {});
    EXPECT_THAT(contexts(), IsEmpty());
    EXPECT_THAT(devkit::Gate::instance().violations(), IsEmpty());
    EXPECT_EQ(devkit::Gate::instance().bracketDepth(), 0);
}

TEST_F(HelpContext, IsPushedWithoutAMapAndSaysSo) {
    fail("UF_HELP_load_map_file", 42);
    EXPECT_TRUE(ui::PushHelpContext());
    EXPECT_THAT(contexts(), ElementsAre("pivrahelp"));
    ui::PopHelpContext();
    EXPECT_THAT(logLines(), ElementsAre(mapWarning(42)));
}

TEST_F(HelpContext, IsNotPoppedAfterAFailedPush) {
    fail("UF_HELP_load_map_file", 7);
    fail("UF_HELP_push_primary_context", 8);
    ui::showStartDialog([] {});
    EXPECT_EQ(devkit::Gate::instance().counts().count("UF_HELP_pop_context"), 0U);
    EXPECT_THAT(logLines(),
                ElementsAre(mapWarning(7),
                            "[WARNING] [Pivra] UF_HELP_push_primary_context failed for pivrahelp with status 8"));
}

TEST_F(HelpContext, LogsAnInterfaceThatCannotBeUsed) {
    devkit::Gate::instance().addFault({"UF_initialize", 0, 3});
    EXPECT_FALSE(ui::PushHelpContext());
    ui::PopHelpContext();
    EXPECT_THAT(logLines(),
                ElementsAre("[WARNING] [Pivra] UF_initialize failed; cannot configure help context for pivrahelp",
                            "[WARNING] [Pivra] UF_initialize failed; cannot restore help context for pivrahelp"));
}

TEST_F(HelpContext, LogsAFailedPop) {
    ui::PushHelpContext();
    fail("UF_HELP_pop_context", 9);
    ui::PopHelpContext();
    EXPECT_EQ(folder.logLines().back(), "[WARNING] [Pivra] UF_HELP_pop_context failed for pivrahelp with status 9");
    EXPECT_EQ(devkit::Gate::instance().bracketDepth(), 0);
}

}  // namespace
