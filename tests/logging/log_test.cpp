#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <logging/cpp_piv_logger.h>
#include <logging/log.h>
#include <support/plugin_folder.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <thread>

namespace {

namespace fs = std::filesystem;
using logging::LogLevel;
using testing::ElementsAre;
using testing::IsEmpty;

class Log : public testing::Test {
 protected:
    Log() { logging::setLogDirectory(directory_); }

    void logAtEachLevel() const {
        logging::LogDebug("d");
        logging::LogInfo("i");
        logging::LogWarning("w");
        logging::LogError("e");
    }

    test_support::PluginFolder folder_;
    fs::path directory_ = folder_.path() / "logs";
    fs::path file_ = directory_ / "pivra-integration.log";
};

TEST_F(Log, writesLinesFromTheCurrentLevelOn) {
    const struct {
        LogLevel level;
        std::vector<std::string> lines;
    } cases[] = {
        {LogLevel::debug, {"[DEBUG] [Pivra] d", "[INFO] [Pivra] i", "[WARNING] [Pivra] w", "[ERROR] [Pivra] e"}},
        {LogLevel::info, {"[INFO] [Pivra] i", "[WARNING] [Pivra] w", "[ERROR] [Pivra] e"}},
        {LogLevel::warning, {"[WARNING] [Pivra] w", "[ERROR] [Pivra] e"}},
        {LogLevel::error, {"[ERROR] [Pivra] e"}},
        {LogLevel::off, {}}};
    for (const auto& [level, lines] : cases) {
        fs::remove(file_);
        logging::setCurrentLevel(level);
        logAtEachLevel();
        EXPECT_EQ(folder_.logLines(), lines) << logging::displayName(level);
    }
}

TEST_F(Log, unfilteredLinesPassEveryLevel) {
    logging::setCurrentLevel(LogLevel::off);
    logging::logUnfiltered(LogLevel::info, "said of the level");
    EXPECT_THAT(folder_.logLines(), ElementsAre("[INFO] [Pivra] said of the level"));
}

TEST_F(Log, onlyTheClientLibrarysLinesLackThePrefix) {
    for (const char* text : {"[cpp-piv] started", "[cpp-piv]", "[cpp-piv", " [cpp-piv] late", "[Pivra] twice", ""}) {
        logging::LogInfo(text);
    }
    EXPECT_THAT(folder_.logLines(),
                ElementsAre("[INFO] [cpp-piv] started", "[INFO] [cpp-piv]", "[INFO] [Pivra] [cpp-piv",
                            "[INFO] [Pivra]  [cpp-piv] late", "[INFO] [Pivra] [Pivra] twice", "[INFO] [Pivra] "));
}

TEST_F(Log, bytesGoOutAsTheyAreBehindTimeAndOffset) {
    logging::LogInfo(std::string_view("Gr\xC3\xB6\xC3\x9F\0\xFF", 8));
    const auto bytes = test_support::readFile(file_);
    ASSERT_GT(bytes.size(), 28u);
    std::string stamp = bytes.substr(0, 28);
    std::replace_if(
        stamp.begin(), stamp.end(), [](char c) { return c >= '0' && c <= '9'; }, '0');
    std::replace(stamp.begin() + 20, stamp.end(), '-', '+');
    EXPECT_EQ(stamp, "[0000-00-00 00:00:00 +0000] ");
    EXPECT_EQ(bytes.substr(28), std::string("[INFO] [Pivra] Gr\xC3\xB6\xC3\x9F\0\xFF\r\n", 25));
}

TEST_F(Log, isLostWithoutADirectory) {
    logging::setLogDirectory({});
    logging::LogError("lost");
    EXPECT_FALSE(logging::IsLogFilePresent());
    logging::setLogDirectory(directory_);
    logging::LogError("kept");
    EXPECT_TRUE(logging::IsLogFilePresent());
    EXPECT_THAT(folder_.logLines(), ElementsAre("[ERROR] [Pivra] kept"));
}

TEST_F(Log, holdsNothingOpenBetweenLines) {
    logging::LogInfo("one");
    EXPECT_EQ(fs::remove_all(directory_), 2u);
    EXPECT_FALSE(logging::IsLogFilePresent());
    logging::LogInfo("two");
    EXPECT_THAT(folder_.logLines(), ElementsAre("[INFO] [Pivra] two"));
}

TEST_F(Log, dropsWhatItCannotWrite) {
    fs::create_directories(file_);
    EXPECT_NO_THROW(logging::LogError("into a directory"));
    EXPECT_NO_THROW(logging::setLogDirectory(folder_.writeFile("a_file", "x") / "below"));
    EXPECT_NO_THROW(logging::LogError("below a file"));
    EXPECT_EQ(test_support::readFile(folder_.path() / "a_file"), "x");
}

TEST_F(Log, createsADirectoryOfAnyName) {
    const auto directory = folder_.path() / u8"Größe" / u8"日本";
    logging::setLogDirectory(directory);
    EXPECT_TRUE(fs::is_directory(directory));
    logging::LogInfo("there");
    EXPECT_TRUE(fs::exists(directory / "pivra-integration.log"));
}

TEST_F(Log, linesOfManyThreadsStayWhole) {
    constexpr int threadCount = 8;
    constexpr int lineCount = 50;
    logging::setCurrentLevel(LogLevel::debug);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([thread] {
            const std::string text(200, static_cast<char>('a' + thread));
            for (int line = 0; line < lineCount; ++line) logging::LogError(text);
        });
    }
    // The level and the directory change meanwhile; both levels let the lines pass.
    for (int turn = 0; turn < 200; ++turn) {
        logging::setCurrentLevel(turn % 2 == 0 ? LogLevel::error : LogLevel::debug);
        logging::setLogDirectory(directory_);
        EXPECT_EQ(logging::LogFilePath("x"), directory_ / "x");
    }
    for (auto& thread : threads) thread.join();

    std::map<std::string, int> counts;
    for (const auto& line : folder_.logLines()) ++counts[line];
    EXPECT_EQ(counts.size(), static_cast<std::size_t>(threadCount));
    for (int thread = 0; thread < threadCount; ++thread) {
        EXPECT_EQ(counts["[ERROR] [Pivra] " + std::string(200, static_cast<char>('a' + thread))], lineCount);
    }
}

TEST_F(Log, clientLibrarysLoggerWritesAtItsOwnLevels) {
    logging::setCurrentLevel(LogLevel::debug);
    const auto logger = logging::makeCppPivLogger();
    logger->debug("[cpp-piv] d");
    logger->info("i");
    logger->warning("w");
    logger->error("e");
    EXPECT_THAT(folder_.logLines(),
                ElementsAre("[DEBUG] [cpp-piv] d", "[INFO] [Pivra] i", "[WARNING] [Pivra] w", "[ERROR] [Pivra] e"));
}

TEST(LogNames, coverEveryValue) {
    const std::tuple<int, const char*, const char*> cases[] = {{0, "DEBUG", "debug"},     {1, "INFO", "info"},
                                                               {2, "WARNING", "warning"}, {3, "ERROR", "error"},
                                                               {4, "OFF", "off"},         {-1, "OFF", "off"}};
    for (const auto& [value, display, lower] : cases) {
        EXPECT_EQ(logging::displayName(static_cast<LogLevel>(value)), display);
        EXPECT_EQ(logging::lowerCaseName(static_cast<LogLevel>(value)), lower);
    }
}

TEST(LogPath, absoluteValuesStandAndOthersAreJoined) {
    const fs::path base = fs::path("base") / "logs";
    const struct {
        fs::path base;
        fs::path value;
        fs::path result;
    } cases[] = {
        {base, "", base},
        {base, "a.log", base / "a.log"},
        {base, "a/b.log", base / "a/b.log"},
        {base, "C:\\x\\a.log", "C:\\x\\a.log"},
        {base, "z:/a.log", "z:/a.log"},
        {base, "\\\\server\\share", "\\\\server\\share"},
        {base, "//server/share", "//server/share"},
        {base, "\\/server", "\\/server"},
        {{}, "C:\\a.log", "C:\\a.log"},
        {{}, "a.log", {}},
        {{}, "", {}},
        {base, "1:a", base / "1:a"},
        {base, ":", base / ":"},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(logging::ResolveLogPath(row.base, row.value).native(), row.result.native()) << row.value;
    }
}

}  // namespace
