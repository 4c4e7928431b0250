#include "logging/log.h"
#include <devkit/call_interceptor.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/memory.h>
#include <support/plugin_folder.h>
#include "platform/environment.h"

#include <array>
#include <atomic>
#include <clocale>
#include <cstdlib>
#include <iostream>
#include <map>
#include <regex>
#include <thread>

namespace {

namespace fs = std::filesystem;
using logging::LogLevel;
using testing::ElementsAre;

class Log : public testing::Test {
 protected:
    Log() { logging::setLogDirectory(directory_); }

    test_support::PluginFolder folder_;
    fs::path directory_ = folder_.path() / "logs";
    fs::path file_ = directory_ / "pivra-integration.log";
};

TEST_F(Log, writesLinesFromTheCurrentLevelOn) {
    const std::vector<std::string> lines{"[DEBUG] [Pivra] d", "[INFO] [Pivra] i", "[WARNING] [Pivra] w",
                                         "[ERROR] [Pivra] e"};
    for (int level = 0; level <= 4; ++level) {
        fs::remove_all(directory_);  // which the next line creates
        logging::setCurrentLevel(static_cast<LogLevel>(level));
        logging::LogDebug("d");
        logging::LogInfo("i");
        logging::LogWarning("w");
        logging::LogError("e");
        EXPECT_EQ(folder_.logLines(), std::vector(lines.begin() + level, lines.end()));
    }
    const auto allocations = test_support::allocations;
    logging::LogError("Head:", logging::quoted("part", lines[0]), logging::flag("drawing", true),
                      logging::number("files", lines.size()));
    EXPECT_EQ(test_support::allocations, allocations) << "A line that is not written allocates nothing.";
    logging::logUnfiltered(LogLevel::info, "said of the level");
    EXPECT_GT(test_support::allocations, allocations);
    EXPECT_THAT(folder_.logLines(), ElementsAre("[INFO] [Pivra] said of the level"));
}

TEST_F(Log, bytesGoOutAsTheyAreBehindTimeAndOffset) {
    // But for control characters: a name with a line break must not look like two lines.
    logging::LogInfo(std::string_view("Gr\xC3\xB6\xC3\x9F\0\r\n\x1B\t\xFF", 12));
    const auto bytes = test_support::readFile(file_);
    ASSERT_GT(bytes.size(), 28u);
    EXPECT_TRUE(std::regex_match(bytes.substr(0, 28), std::regex(R"(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d [+-]\d{4}\] )")));
    EXPECT_EQ(bytes.substr(28), "[INFO] [Pivra] Gr\xC3\xB6\xC3\x9F    \t\xFF\r\n");
}

TEST_F(Log, dropsWhatItCannotWrite) {
    fs::create_directories(file_);
    EXPECT_NO_THROW(logging::LogError("into a directory"));
    EXPECT_NO_THROW(logging::setLogDirectory(folder_.writeFile("a_file", "x") / "below"));
    EXPECT_NO_THROW(logging::LogError("below a file"));
    EXPECT_EQ(test_support::readFile(folder_.path() / "a_file"), "x");
#ifndef _WIN32
    logging::setLogDirectory(folder_.path() / "full");
    devkit::CallInterceptor::instance().reset();
    devkit::CallInterceptor::instance().addFault({"platform::appendToFile", 1, 1, "", devkit::FaultKind::full});
    EXPECT_NO_THROW(logging::LogError(std::string(100, 'x')));
    EXPECT_LT(test_support::readFile(folder_.path() / "full" / logging::logFileName).size(), 100u);  // not once more
#endif
}

// The other process is this test once more, started with the name of the directory.
TEST_F(Log, linesOfManyThreadsOfTwoProcessesStayWhole) {
    constexpr std::size_t threadCount = 16;
    const std::size_t lineCount = test_support::underLoad(50, 2'000);
    const auto given = platform::environmentPath("PIVRA_TEST_LOGS").value_or(fs::path());
    const bool isOther = !given.empty();
    const auto directory = isOther ? given : directory_;
    test_support::setEnvironment("PIVRA_TEST_LOGS", directory);
    logging::setLogDirectory(directory);
    logging::setCurrentLevel(LogLevel::debug);
    std::atomic<bool> otherEnded = isOther;
    std::array<std::size_t, threadCount> written{};
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&, thread] {
            const std::string text(200, static_cast<char>((isOther ? 'A' : 'a') + thread));
            for (; written[thread] < lineCount || !otherEnded; ++written[thread]) logging::LogError(text);
        });
    }
    // The level and the directory change meanwhile; both levels let the lines pass.
    for (int turn = 0; turn < 200; ++turn) {
        logging::setCurrentLevel(turn % 2 == 0 ? LogLevel::error : LogLevel::debug);
        logging::setLogDirectory(directory);
        EXPECT_EQ(logging::LogFilePath("x"), directory / "x");
    }
    if (!isOther) {
        const auto program = testing::internal::GetArgvs()[0];
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        EXPECT_EQ(std::system(('"' + program + "\" --gtest_filter=Log." + test->name()).c_str()), 0);
        otherEnded = true;
    }
    for (auto& thread : threads) thread.join();
    test_support::setEnvironment("PIVRA_TEST_LOGS", {});
    if (isOther) return;

    std::map<std::string, std::size_t> counts;
    for (const auto& line : folder_.logLines()) ++counts[line];
    EXPECT_EQ(counts.size(), 2 * threadCount);
    for (std::size_t thread = 0; thread < threadCount; ++thread) {
        EXPECT_EQ(counts["[ERROR] [Pivra] " + std::string(200, static_cast<char>('a' + thread))], written[thread]);
        EXPECT_EQ(counts["[ERROR] [Pivra] " + std::string(200, static_cast<char>('A' + thread))], lineCount);
    }
    std::cout << "load: " << folder_.logLines().size() << " whole lines of two processes with 16 threads each\n";
}

#ifndef _WIN32
// Zones without summer time, so that the offset does not depend on the day of the test.
TEST_F(Log, timesCarryTheOffsetOfTheZone) {
    for (const auto& [zone, offset] : {std::pair("<AAA>3:30", "-0330"), std::pair("<BBB>-14", "+1400"),
                                       std::pair("<CCC>0:30", "-0030"), std::pair("UTC0", "+0000")}) {
        test_support::setEnvironment("TZ", zone);
        fs::remove(file_);
        logging::setLogDirectory(directory_);  // which forgets the second of the last line
        logging::LogInfo("now");
        EXPECT_EQ(test_support::readFile(file_).substr(21, 5), offset);
    }
    test_support::setEnvironment("TZ", {});
}
#endif

TEST(LogPath, absoluteValuesStandAndOthersAreJoined) {
    const fs::path base = fs::path("base") / "logs";
    for (const char* absolute :
         {"A:\\x\\a.log", "Z:/", "a:/a.log", "z:/a.log", "\\\\server\\share", "//s", "\\/server"}) {
        EXPECT_EQ(logging::ResolveLogPath(base, absolute).native(), fs::path(absolute).native());
    }
    for (const char* relative : {"ab/b.log", "a:b", "1:/a", ":"}) {
        EXPECT_EQ(logging::ResolveLogPath(base, relative).native(), (base / relative).native());
    }
    EXPECT_EQ(logging::ResolveLogPath(base, ""), base);
    EXPECT_EQ(logging::ResolveLogPath({}, "C:\\a.log"), "C:\\a.log");
    EXPECT_TRUE(logging::ResolveLogPath({}, "a.log").empty());
}

TEST_F(Log, fieldsStandBehindTheHeadWhateverTheLocale) {
    // The locale's name on Windows, and that on Linux, where it may be missing.
    if (std::setlocale(LC_NUMERIC, "German") == nullptr) std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    using logging::decimal;
    logging::LogInfo("H", decimal("a", 0), decimal("b", 1.0 / 3), decimal("c", -0.25), decimal("d", 20),
                     decimal("e", 999999.9), logging::quotedIfAny("f", std::nullopt), decimal("g", 9.5367431640625e-7));
    EXPECT_THAT(folder_.logLines(),
                ElementsAre("[INFO] [Pivra] H a=0 b=0.333333 c=-0.25 d=20 e=1000000 g=0.000000953674."));
    std::setlocale(LC_NUMERIC, "C");
}

}  // namespace
