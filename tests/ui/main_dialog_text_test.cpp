#include <service/version.h>
#include <ui/characters.h>
#include <ui/main_dialog_text.h>

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace ui;

std::string repeated(const std::string& character, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += character;
    return text;
}

pivra::ModelMetadata sized(double megabytes, bool isAssembly = false, std::size_t files = 0) {
    pivra::ModelMetadata metadata;
    metadata.fileSizeMb = megabytes;
    metadata.isAssembly = isAssembly;
    metadata.files.resize(files);
    return metadata;
}

TEST(FileNameLine, IsCutByCharactersAndThenHasATooltip) {
    for (const std::string character : {"a", "é", "Ω", "日", "🔩"}) {
        const auto longest = repeated(character, 60);
        EXPECT_EQ(fileNameLine(longest).text, "     " + longest);
        EXPECT_EQ(fileNameLine(longest).tooltip, "");
        EXPECT_EQ(fileNameLine(longest + "x").text, "     " + repeated(character, 57) + "...");
        EXPECT_EQ(fileNameLine(longest + "x").tooltip, longest + "x");
    }
    EXPECT_EQ(fileNameLine("").text, "     Unknown");
    EXPECT_EQ(fileNameLine("").tooltip, "");
}

TEST(Characters, AreNotBytes) {
    EXPECT_EQ(characterCount("aé日🔩"), 4U);
    EXPECT_EQ(firstCharacters("aé日🔩", 2), "aé");
    EXPECT_EQ(firstCharacters("aé", 2), "aé");
    EXPECT_EQ(firstCharacters("aé", 0), "");
    EXPECT_EQ(firstCharacters("", 3), "");
}

TEST(SizeLine, NamesSizeAndNumberOfFiles) {
    const struct {
        pivra::ModelMetadata metadata;
        std::string expected;
    } cases[] = {
        {sized(1.0), "     Size: 1.00 MB"},
        {sized(1234.567), "     Size: 1234.57 MB"},
        {sized(0.001), "     Size: 0.00 MB"},
        {sized(0), "     Size: Unknown"},
        {sized(2.5, true, 1), "     Size: 2.50 MB (1 file)"},
        {sized(2.5, true, 3), "     Size: 2.50 MB (3 files)"},
        {sized(2.5, true, 0), "     Size: 2.50 MB"},
        {sized(0, true, 2), "     Size: Unknown (2 files)"},
        {sized(2.5, false, 1), "     Size: 2.50 MB"},
    };
    for (const auto& c : cases) EXPECT_EQ(sizeLine(c.metadata), c.expected);
}

TEST(MainDialogText, SpeaksOfDateUserAndVersion) {
    pivra::ModelMetadata metadata;
    EXPECT_EQ(lastModifiedLine(metadata), "     Last modified: Unknown");
    metadata.lastModified = "May 04, 2025 - 09:07 PM";
    EXPECT_EQ(lastModifiedLine(metadata), "     Last modified: May 04, 2025 - 09:07 PM");
    EXPECT_EQ(greeting("Zoë Ngô"), "Welcome back, Zoë Ngô!");
    EXPECT_EQ(versionText(), std::string("Version ") + service::version);
}

TEST(PartWarnings, ShowWhatApplies) {
    pivra::ModelMetadata metadata;
    for (const auto& warning : partWarnings(metadata, false, true)) EXPECT_FALSE(warning.shown) << warning.group;
    EXPECT_TRUE(partWarnings(metadata, true, true)[1].shown);

    metadata.hasLegacyId = true;
    metadata.hasUnsavedChanges = true;
    metadata.hasUnsupportedFileTypes = true;
    const auto fixed = partWarnings(metadata, false, true);
    EXPECT_STREQ(fixed[0].text, "Legacy file(s) detected. PIVRA_ID attribute will be added to maintain traceability.");
    EXPECT_STREQ(partWarnings(metadata, false, false)[0].text, "Legacy file(s) detected. Unable to upload.");
    EXPECT_TRUE(fixed[0].shown && !fixed[1].shown && fixed[2].shown && fixed[3].shown);
}

TEST(BlockingMessage, IsTheIdentifierErrorFirst) {
    pivra::ModelMetadata metadata;
    EXPECT_EQ(blockingMessage(metadata), "");
    metadata.uploadBlockedReason = "blocked";
    EXPECT_EQ(blockingMessage(metadata), "blocked");
    metadata.traceabilityError = "identifier";
    EXPECT_EQ(blockingMessage(metadata), "identifier");
}

TEST(SelectedIndex, TakesNumbersButNotNamesThatLookLikeNumbers) {
    const std::vector<std::string> plain{"Main", "Archive", "Tests"};
    const std::vector<std::string> numeric{"2024", "0", "1"};
    const struct {
        const std::vector<std::string>& members;
        std::string text;
        int number;
        std::optional<std::size_t> expected;
    } cases[] = {
        {plain, "2", 0, 2},
        {plain, "Archive", 1, 1},
        {plain, "1x", 2, 2},
        {plain, " 1", 2, 2},
        {plain, "", 0, 0},
        {plain, "-1", 1, 1},
        {plain, "99999999999999", 1, 1},
        {plain, "3", 0, std::nullopt},
        {plain, "Main", -1, std::nullopt},
        {plain, "Main", 3, std::nullopt},
        {numeric, "2024", 0, 0},
        {numeric, "0", 1, 1},
        {numeric, "1", 2, 2},
        {numeric, "2", 2, 2},
        {numeric, "0", 0, 0},
        {{}, "0", 0, std::nullopt},
    };
    for (const auto& c : cases) EXPECT_EQ(selectedIndex(c.members, c.text, c.number), c.expected) << c.text;
}

}  // namespace
