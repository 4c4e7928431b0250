#include <gtest/gtest.h>
#include <logging/log_line.h>

#include <cstdint>
#include <locale>

namespace {

using logging::LogLine;

TEST(LogLine, writesFieldsInOrderAndEndsWithAFullStop) {
    EXPECT_EQ(LogLine("Head:").text(), "Head:.");
    EXPECT_EQ(LogLine("Head").quoted("a", "b c").plain("d", "e").flag("f", true).flag("g", false).text(),
              "Head a=\"b c\" d=e f=true g=false.");
    EXPECT_EQ(LogLine("Head").number("n", std::int64_t{-9'000'000'000}).number("m", 3u).text(""),
              "Head n=-9000000000 m=3");
}

TEST(LogLine, decimalsArePlainHoweverSmallAndWhateverTheLocale) {
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
    };
    const auto outer = std::locale::global(std::locale(std::locale::classic(), new Comma));
    const std::pair<double, const char*> cases[] = {{0.0, "0"},
                                                    {0.5, "0.5"},
                                                    {2.0, "2"},
                                                    {1.0 / 3, "0.333333"},
                                                    {-0.25, "-0.25"},
                                                    {1234567.0, "1234567"},
                                                    {20.0, "20"},
                                                    {999999.9, "1000000"},
                                                    {9.5367431640625e-7, "0.000000953674"}};
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(LogLine("H").decimal("v", value).text(), std::string("H v=") + text + ".");
    }
    std::locale::global(outer);
}

}  // namespace
