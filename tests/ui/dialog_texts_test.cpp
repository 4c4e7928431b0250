#include "platform/text.h"
#include "ui/dialog_text.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace ui;

TEST(FileNameLine, IsCutByCharactersAndThenHasATooltip) {
    for (const std::string character : {"a", "é", "Ω", "日", "🔩"}) {
        std::string cut;
        for (int i = 0; i < 57; ++i) cut += character;
        const auto longest = cut + character + character + character;
        EXPECT_EQ(fileNameLine(longest).text, "     " + longest);
        EXPECT_EQ(fileNameLine(longest).tooltip, "");
        EXPECT_EQ(fileNameLine(longest + "x").text, "     " + cut + "...");
        EXPECT_EQ(fileNameLine(longest + "x").tooltip, longest + "x");
    }
    EXPECT_EQ(fileNameLine("").text, "     Unknown");
    EXPECT_EQ(fileNameLine("").tooltip, "");
}

TEST(SizeLine, NamesSizeAndNumberOfFiles) {
    const struct {
        double megabytes;
        bool isAssembly;
        std::size_t files;
        std::string expected;
    } cases[] = {
        {1234.567, false, 1, "     Size: 1234.57 MB"}, {0.001, false, 1, "     Size: 0.00 MB"},
        {2.5, true, 1, "     Size: 2.50 MB (1 file)"}, {2.5, true, 0, "     Size: 2.50 MB"},
        {0, true, 2, "     Size: Unknown (2 files)"},
    };
    for (const auto& c : cases) {
        pivra::ModelMetadata metadata;
        metadata.fileSizeMb = c.megabytes;
        metadata.isAssembly = c.isAssembly;
        metadata.files.resize(c.files);
        EXPECT_EQ(sizeLine(metadata), c.expected);
    }
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
        {plain, "0", 1, 0},
        {plain, "Archive", 1, 1},
        {plain, " 1", 2, 2},
        {plain, "", 0, 0},
        {plain, "-1", 1, 1},
        {plain, "99999999999999", 1, 1},
        {plain, "3", 0, std::nullopt},
        {plain, "Main", -1, std::nullopt},
        {numeric, "2024", 0, 0},
        {numeric, "0", 1, 1},
        {numeric, "2", 2, 2},
        {numeric, "0", 0, 0},
        {{}, "0", 0, std::nullopt},
    };
    for (const auto& c : cases) EXPECT_EQ(selectedIndex(c.members, c.text, c.number), c.expected) << c.text;
}

TEST(LeftBlanks, CentreALineOrKeepAMargin) {
    const struct {
        std::size_t length, width, expected;
    } cases[] = {{40, 75, 32}, {0, 72, 69}, {65, 72, 4},  {66, 72, 3},
                 {67, 72, 3},  {72, 72, 3}, {500, 72, 3}, {11, 82, 68}};
    for (const auto& c : cases) {
        EXPECT_EQ(leftBlanks(c.length, c.width), std::string(c.expected, ' ')) << c.length << " in " << c.width;
    }
}

}  // namespace
