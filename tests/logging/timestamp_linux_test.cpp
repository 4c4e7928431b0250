#include <gtest/gtest.h>
#include <logging/log.h>
#include <support/plugin_folder.h>

#include <ctime>

namespace {

// Zones without summer time, so that the offset does not depend on the day of the test.
TEST(LogTimestamp, carriesTheZonesOffset) {
    const test_support::PluginFolder folder;
    logging::setLogDirectory(folder.path());
    for (const auto& [zone, offset] : {std::pair("<AAA>3:30", "-0330"), std::pair("<BBB>-5:45", "+0545"),
                                       std::pair("<CCC>0:30", "-0030"), std::pair("UTC0", "+0000")}) {
        test_support::setEnvironment("TZ", zone);
        const auto before = std::time(nullptr);
        logging::LogInfo("now");
        const auto after = std::time(nullptr);
        const auto log = test_support::readFile(folder.path() / logging::logFileName);
        const auto line = log.substr(log.rfind('[', log.rfind("] [INFO]")));
        EXPECT_EQ(line.substr(21, 5), offset);
        std::tm fields{};
        ASSERT_NE(::strptime(line.c_str(), "[%Y-%m-%d %H:%M:%S", &fields), nullptr) << line;
        fields.tm_isdst = -1;
        const auto logged = std::mktime(&fields);
        EXPECT_GE(logged, before);
        EXPECT_LE(logged, after);
    }
    test_support::setEnvironment("TZ", {});
}

}  // namespace
