#include <config/properties.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/module.h>
#include <support/plugin_folder.h>

#include <sstream>

namespace {

using config::PropertiesTable;
using testing::ElementsAre;
using testing::IsEmpty;

PropertiesTable parse(const std::string& text) {
    std::istringstream stream(text);
    return config::parseProperties(stream);
}

TEST(PropertiesText, isReadLineByLine) {
    const struct {
        std::string text;
        PropertiesTable table;
    } cases[] = {
        {"", {}},
        {"a=1", {{"a", "1"}}},
        {" \ta \t= \t1 \t\n", {{"a", "1"}}},
        {"a=1\r\nb=2\r\n", {{"a", "1"}, {"b", "2"}}},
        {"a = b=c = d\n", {{"a", "b=c = d"}}},
        {"a=first\na=last\n", {{"a", "last"}}},
        {"a=1\na=\n", {{"a", ""}}},
        {"A=1\na=2\n", {{"A", "1"}, {"a", "2"}}},
        {"word\n=no key\n  = no key\n\n \t\r\n", {}},
        {"#a=1\n  #b=2\n\t!c=3\nd=#4\n", {{"d", "#4"}}},
        {"a b = c  d\n", {{"a b", "c  d"}}},
        {"\v=\f\n", {{"\v", "\f"}}},  // not among the blanks
        {"a=\\\nb=\"q\"\n", {{"a", "\\"}, {"b", "\"q\""}}},
        {"gr\xC3\xB6\xC3\x9F=\xFF\n", {{"gr\xC3\xB6\xC3\x9F", "\xFF"}}},
    };
    for (const auto& [text, table] : cases) EXPECT_EQ(parse(text), table) << text;
}

TEST(PropertiesText, byteOrderMarkIsPassedOverOnTheFirstLineOnly) {
    const std::string mark = "\xEF\xBB\xBF";
    EXPECT_EQ(parse(mark + "a=1\n"), parse("a=1\n"));
    EXPECT_EQ(parse(mark + "#a=1\n"), PropertiesTable());
    EXPECT_EQ(parse(mark), PropertiesTable());
    EXPECT_EQ(parse("\xEF\xBB"), PropertiesTable());
    EXPECT_EQ(parse("\n" + mark + "a=1\n"), (PropertiesTable{{mark + "a", "1"}}));
    EXPECT_EQ(parse(mark + mark + "a=1\n"), (PropertiesTable{{mark + "a", "1"}}));
}

TEST(PropertiesText, trimKnowsFourBlanks) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""}, {" \t\r\n", ""}, {"\r\n a b\t", "a b"}, {"\va\f", "\va\f"}, {"a", "a"}};
    for (const auto& [text, trimmed] : cases) EXPECT_EQ(config::Trim(text), trimmed);
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
    std::filesystem::remove(config::PropertiesFilePath());
    EXPECT_FALSE(config::LoadProperties());
    EXPECT_EQ(config::GetProperty("a"), "");
}

TEST(Properties, lieBesideTheModuleAndElseInTheCurrentDirectory) {
    const test_support::PluginFolder folder;
    EXPECT_EQ(config::PropertiesFilePath(), folder.path() / "pivra.properties");
    test_support::setModuleFileName({});
    EXPECT_EQ(config::PropertiesFilePath(), std::filesystem::path("pivra.properties"));
}

TEST(BooleanSetting, acceptsItsWordsInAnyCase) {
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
}

TEST(BooleanSetting, anythingElseCostsAWarning) {
    const test_support::PluginFolder folder;
    folder.startLogging();
    EXPECT_TRUE(config::ParseBooleanSetting("pivra_fix_legacy_id", "Maybe", true));
    EXPECT_FALSE(config::ParseBooleanSetting("other", "2", false));
    const auto lines = folder.logLines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2],
              "[WARNING] [Pivra] pivra.properties: unrecognized value for pivra_fix_legacy_id: \"Maybe\"; "
              "using default true.");
    EXPECT_EQ(lines.back(),
              "[WARNING] [Pivra] pivra.properties: unrecognized value for other: \"2\"; using default false.");
}

}  // namespace
