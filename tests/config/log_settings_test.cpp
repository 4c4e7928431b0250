#include <config/log_settings.h>
#include <config/properties.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <logging/log.h>
#include <platform/text_encoding.h>
#include <support/plugin_folder.h>

namespace {

namespace fs = std::filesystem;
using logging::LogLevel;
using testing::ElementsAre;
using testing::IsEmpty;

class LogSettings : public testing::Test {
 protected:
    /// One run with `level` as the setting's text.
    void runAtLevel(const std::string& level) const {
        folder_.writeProperties("pivra_nx_log_directory=logs\npivra_nx_log_level=" + level + "\n");
        config::ApplyLogSettings();
    }

    fs::path logFileAfter(const std::string& properties) const {
        folder_.writeProperties(properties);
        config::ApplyLogSettings();
        const auto file = logging::LogFilePath(logging::logFileName);
        EXPECT_TRUE(fs::exists(file)) << file;
        return file;
    }

    test_support::PluginFolder folder_;
};

TEST_F(LogSettings, directoryIsFoundByTheSettingOrTheUser) {
    const auto name = fs::path(logging::logFileName);
    const auto elsewhere = folder_.path() / u8"Größe" / "logs";
    EXPECT_EQ(logFileAfter(""), folder_.localAppData() / "Pivra" / "NX" / "logs" / name);
    EXPECT_EQ(logFileAfter("pivra_nx_log_directory = logs\n"), folder_.path() / "logs" / name);
    EXPECT_EQ(logFileAfter("pivra_nx_log_directory = deep/er\n"), folder_.path() / "deep/er" / name);
    EXPECT_EQ(logFileAfter("pivra_nx_log_directory = " + platform::utf8FromPath(elsewhere) + "\n"), elsewhere / name);
    test_support::setEnvironment("LOCALAPPDATA", {});
    EXPECT_EQ(logFileAfter(""), folder_.path() / name);
}

TEST_F(LogSettings, defaultLevelIsSaidOnce) {
    runAtLevel("");
    runAtLevel("");
    EXPECT_THAT(folder_.logLines(), ElementsAre("[INFO] [Pivra] Log level set to INFO (default)"));
    fs::remove(folder_.path() / "logs" / logging::logFileName);
    runAtLevel("");
    EXPECT_THAT(folder_.logLines(), ElementsAre("[INFO] [Pivra] Log level set to INFO (default)"));
}

TEST_F(LogSettings, everyWordForALevelIsKnown) {
    const std::pair<const char*, LogLevel> cases[] = {{"debug", LogLevel::debug},     {"Info", LogLevel::info},
                                                      {"WARNING", LogLevel::warning}, {"warn", LogLevel::warning},
                                                      {"error", LogLevel::error},     {"OFF", LogLevel::off},
                                                      {"none", LogLevel::off},        {"Disabled", LogLevel::off}};
    for (const auto& [word, level] : cases) {
        runAtLevel(word);
        EXPECT_EQ(logging::currentLevel(), level) << word;
    }
}

TEST_F(LogSettings, aChangeIsSaidWhateverTheLevel) {
    for (const char* word : {"debug", "debug", "warn", "error", "off", "off", "error", "", "info"}) runAtLevel(word);
    EXPECT_THAT(folder_.logLines(), ElementsAre("[INFO] [Pivra] Log level set to DEBUG (properties)",
                                                "[INFO] [Pivra] Log level set to WARNING (properties)",
                                                "[INFO] [Pivra] Log level set to ERROR (properties)",
                                                "[INFO] [Pivra] Log level set to ERROR (properties)",
                                                "[INFO] [Pivra] Log level set to INFO (default)"));
}

TEST_F(LogSettings, offIsSilent) {
    runAtLevel("off");
    logging::LogError("unheard");
    EXPECT_THAT(folder_.logLines(), IsEmpty());
    runAtLevel("error");
    EXPECT_THAT(folder_.logLines(), ElementsAre("[INFO] [Pivra] Log level set to ERROR (properties)"));
}

TEST_F(LogSettings, anUnknownWordKeepsTheLevelAndWarnsEachRun) {
    const std::string warning =
        "[WARNING] [Pivra] pivra.properties: unrecognized value for pivra_nx_log_level: \"verbose\"; ignoring.";
    runAtLevel("off");
    runAtLevel("verbose");
    runAtLevel("verbose");
    EXPECT_EQ(logging::currentLevel(), LogLevel::off);
    EXPECT_THAT(folder_.logLines(), ElementsAre(warning, warning));
}

TEST_F(LogSettings, aSettingWithoutANameIsStillNamed) {
    runAtLevel("error");
    config::applyLogLevel("", " loud ");
    EXPECT_EQ(folder_.logLines().back(),
              "[WARNING] [Pivra] pivra.properties: unrecognized value for log_level: \" loud \"; ignoring.");
    config::applyLogLevel("", " Debug\t");
    EXPECT_EQ(folder_.logLines().back(), "[INFO] [Pivra] Log level set to DEBUG (properties)");
}

TEST_F(LogSettings, unusableDirectoryCostsTheLogAlone) {
    folder_.writeFile("blocked", "x");
    folder_.writeProperties("pivra_nx_log_directory = blocked/logs\n");
    EXPECT_NO_THROW(config::ApplyLogSettings());
    EXPECT_FALSE(logging::IsLogFilePresent());
}

TEST_F(LogSettings, withoutAModuleARelativeDirectoryIsNoDirectory) {
    test_support::setModuleFileName({});
    EXPECT_EQ(config::defaultLogDirectory(), folder_.localAppData() / "Pivra" / "NX" / "logs");
    test_support::setEnvironment("LOCALAPPDATA", {});
    EXPECT_TRUE(config::defaultLogDirectory().empty());
    config::ApplyLogSettings();
    EXPECT_TRUE(logging::LogFilePath("x").empty());
}

}  // namespace
