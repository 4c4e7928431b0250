#include "config/properties.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/plugin_folder.h>
#include "config/log_settings.h"
#include "logging/log.h"

namespace {

namespace fs = std::filesystem;
using config::parseProperties;
using config::PropertiesTable;
using logging::LogLevel;
using testing::ElementsAre;

TEST(PropertiesText, isReadLineByLine) {
    const struct {
        std::string text;
        PropertiesTable table;
    } cases[] = {
        {"a=1", {{"a", "1"}}},
        {" \ta \t= \t1 \t\n", {{"a", "1"}}},
        {"a=1\r\nb=2\r\n", {{"a", "1"}, {"b", "2"}}},
        {"a=first\nA=other\na=\n", {{"a", ""}, {"A", "other"}}},
        {"word\n=no key\n  = no key\n\n \t\r\n", {}},
        {"#a=1\n  #b=2\n\t!c=3\nd=#4\n", {{"d", "#4"}}},
        {"a b = c  d=e\n", {{"a b", "c  d=e"}}},
        {"\v=\f\n", {{"\v", "\f"}}},  // not among the blanks
        {"a=\\\nb=\"q\"\n", {{"a", "\\"}, {"b", "\"q\""}}},
        {"gr\xC3\xB6\xC3\x9F=\xFF\n", {{"gr\xC3\xB6\xC3\x9F", "\xFF"}}},
    };
    for (const auto& [text, table] : cases) EXPECT_EQ(parseProperties(text), table) << text;
}

TEST(PropertiesText, byteOrderMarkIsPassedOverOnTheFirstLineOnly) {
    const std::string mark = "\xEF\xBB\xBF";
    EXPECT_EQ(parseProperties(mark + "a=1\n"), parseProperties("a=1\n"));
    EXPECT_EQ(parseProperties(mark + "#a=1\n"), PropertiesTable());
    EXPECT_EQ(parseProperties("\xEF\xBB"), PropertiesTable());
    EXPECT_EQ(parseProperties("\n" + mark + "a=1\n"), (PropertiesTable{{mark + "a", "1"}}));
    EXPECT_EQ(parseProperties(mark + mark + "a=1\n"), (PropertiesTable{{mark + "a", "1"}}));
}

TEST(Properties, aNewReadingReplacesTheTable) {
    const test_support::PluginFolder folder;
    folder.writeProperties("a = 1\nb = 2\n");
    EXPECT_TRUE(config::LoadProperties());
    EXPECT_EQ(config::GetProperty("a"), "1");
    EXPECT_EQ(config::GetProperty("A"), "");
    folder.writeProperties("a = 3\n");
    EXPECT_EQ(config::GetProperty("a"), "1");
    EXPECT_TRUE(config::LoadProperties());
    EXPECT_EQ(config::GetProperty("a"), "3");
    EXPECT_EQ(config::GetProperty("b"), "");
    fs::remove(config::PropertiesFilePath());
    EXPECT_FALSE(config::LoadProperties());
    EXPECT_EQ(config::GetProperty("a"), "");
    test_support::setModuleFileName({});
    EXPECT_EQ(config::PropertiesFilePath(), fs::path("pivra.properties")) << "without a module";
}

TEST(BooleanSetting, acceptsItsWordsInAnyCaseAndWarnsOfOthers) {
    const test_support::PluginFolder folder;
    folder.startLogging();
    const auto before = folder.logLines();
    for (const char* word : {"1", "true", "Yes", "ON", "Enabled", " yes\t"}) {
        EXPECT_TRUE(config::ParseBooleanSetting("k", word, false)) << word;
    }
    for (const char* word : {"0", "False", "NO", "off", "disabled", "\rno "}) {
        EXPECT_FALSE(config::ParseBooleanSetting("k", word, true)) << word;
    }
    for (const char* nothing : {"", " \t"}) {
        EXPECT_TRUE(config::ParseBooleanSetting("k", nothing, true));
        EXPECT_FALSE(config::ParseBooleanSetting("k", nothing, false));
    }
    EXPECT_EQ(folder.logLines(), before);
    EXPECT_TRUE(config::ParseBooleanSetting("k", "Maybe", true));
    EXPECT_FALSE(config::ParseBooleanSetting("k", "2", false));
    EXPECT_EQ(folder.logLines().size(), before.size() + 2) << "a warning each";
}

class LogSettings : public testing::Test {
 protected:
    /// One run with `level` as the setting's text.
    void runAtLevel(const std::string& level) const {
        folder_.writeProperties("pivra_nx_log_directory=logs\npivra_nx_log_level=" + level + "\n");
        config::ApplyLogSettings();
    }

    test_support::PluginFolder folder_;
};

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

TEST_F(LogSettings, aChangeIsSaidOnceWhateverTheLevelAndAnUnknownWordEachRun) {
    for (const char* word : {"", "", "debug", "debug", "warn", "off", "verbose", "verbose", "error", ""}) {
        runAtLevel(word);
        if (std::string(word) == "verbose") {
            EXPECT_EQ(logging::currentLevel(), LogLevel::off);
        }
    }
    const std::string set = "[INFO] [Pivra] Log level set to ";
    const auto unknown = testing::HasSubstr("\"verbose\"");
    EXPECT_THAT(folder_.logLines(),
                ElementsAre(set + "INFO (default)", set + "DEBUG (properties)", set + "WARNING (properties)", unknown,
                            unknown, set + "ERROR (properties)", set + "INFO (default)"));
    fs::remove(folder_.path() / "logs" / logging::logFileName);
    runAtLevel("");
    EXPECT_THAT(folder_.logLines(), ElementsAre(set + "INFO (default)")) << "a new file";
}

TEST_F(LogSettings, unusableOrMissingDirectoryCostsTheLogAlone) {
    folder_.writeFile("blocked", "x");
    folder_.writeProperties("pivra_nx_log_directory = blocked/logs\n");
    EXPECT_NO_THROW(config::ApplyLogSettings());
    EXPECT_FALSE(logging::IsLogFilePresent());

    test_support::setModuleFileName({});
    config::ApplyLogSettings();
    EXPECT_EQ(logging::LogFilePath("x"), folder_.localAppData() / "Pivra" / "NX" / "logs" / "x");
    test_support::setEnvironment("LOCALAPPDATA", {});
    config::ApplyLogSettings();
    EXPECT_TRUE(logging::LogFilePath("x").empty());
}

}  // namespace
