#include "export_fixture.h"

#include <support/directory_link.h>
#include "platform/environment.h"
#include "platform/remove_tree.h"

#include <future>
#include <set>
#include <stdexcept>

namespace {

using namespace export_test;

class SessionTempDirectories : public ExportTest {
 protected:
    static std::string failureOf(const std::string& key) {
        try {
            pivra::sessionTempDirectory(key);
            return "none";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
    }
};

TEST(SessionToken, mixesCountThreadAndTime) {
    EXPECT_EQ(pivra::sessionToken(0, 0, 0), "9a4aecff3b9c27ea");
    EXPECT_EQ(pivra::sessionToken(1, 0x01020304, 123456789), "f8bd3d0514986a6a");
    EXPECT_EQ(pivra::sessionToken(3, 7, 0xcc89e14b86c810), "00000000000000ab");
}

TEST_F(SessionTempDirectories, baseFallsBackToLocalAppData) {
    if (testing::UnitTest::GetInstance()->test_to_run_count() > 1) {
        GTEST_SKIP() << "The base is found once a process, so that this takes a process of its own.";
    }
    const fs::path tooLong = folder.temp() / std::string(250, 'x');
    test_support::setEnvironment("TMP", tooLong);
    test_support::setEnvironment("TMPDIR", tooLong);
    test_support::setEnvironment("LOCALAPPDATA", {});
    ASSERT_FALSE(platform::userTempDirectory().has_value());
    EXPECT_EQ(failureOf("key"), "Unable to resolve base directory for session temp files.");
    EXPECT_NO_THROW(pivra::cleanupStaleSessionTempDirectories());

    test_support::setEnvironment("LOCALAPPDATA", folder.localAppData());
    EXPECT_EQ(pivra::sessionTempDirectory("key").parent_path(), folder.localAppData() / "Temp");
}

TEST_F(SessionTempDirectories, oneKeyHasOneFolderAndAnotherKeyReplacesIt) {
    const fs::path first = pivra::sessionTempDirectory("one");
    EXPECT_EQ(first.parent_path() / "", folder.temp() / "");
    EXPECT_EQ(pivra::sessionTempDirectory("one"), first);
    folder.writeFile(first / "deep" / "file.prt", "x");
    const fs::path second = pivra::sessionTempDirectory("two");
    EXPECT_NE(second, first);
    EXPECT_FALSE(fs::exists(first));
    const fs::path third = pivra::sessionTempDirectory("");
    EXPECT_TRUE(fs::is_directory(third));
    EXPECT_FALSE(fs::exists(second));
    pivra::cleanupSessionTempDirectory();
    EXPECT_TRUE(fs::is_empty(folder.temp()));
    EXPECT_NE(pivra::sessionTempDirectory("two"), third);
}

TEST_F(SessionTempDirectories, folderIsHeldAgainstTheSweepOfAnotherSession) {
    const fs::path current = pivra::sessionTempDirectory("key");
    const fs::path file = folder.writeFile(current / "bolt.prt", "x");
    EXPECT_EQ(platform::removeTree(current).value(), platform::errorSharingViolation);
    pivra::cleanupStaleSessionTempDirectories();
    EXPECT_TRUE(fs::exists(file));
    EXPECT_THAT(heads(), ElementsAre("DEBUG Temp directory is in use and stays"));
    pivra::cleanupSessionTempDirectory();
    EXPECT_FALSE(fs::exists(current));
}

#ifndef _WIN32  // where nobody can take a folder away that is held
TEST_F(SessionTempDirectories, folderThatVanishedOrChangedIsNoticed) {
    const fs::path current = pivra::sessionTempDirectory("key");
    fs::remove(current);
    EXPECT_EQ(pivra::sessionTempDirectory("key"), current);
    EXPECT_TRUE(fs::is_directory(current));

    fs::remove(current);
    folder.writeFile(current, "no folder");
    EXPECT_EQ(failureOf("key"), "Session temp path exists but is not a directory.");
    fs::remove(current);
    fs::remove(folder.temp());
    EXPECT_EQ(failureOf("key"), "Failed to create session temp directory.");
    EXPECT_EQ(failureOf("other"), "Unable to allocate a unique session temp directory.");
    fs::create_directory(folder.temp());
    EXPECT_EQ(failureOf("other"), "none");
}
#endif

TEST_F(SessionTempDirectories, sweepEntersNoLink) {
    pivra::sessionTempDirectory("resolves the base");
    const fs::path target = folder.writeFile("models/kept.prt", "kept");
    const test_support::DirectoryLink link(folder.temp() / "pivra-link", target.parent_path());
    pivra::cleanupStaleSessionTempDirectories();
    EXPECT_EQ(readFile(target), "kept");
}

TEST_F(SessionTempDirectories, threadsShareOneFolderOfAKey) {
    std::vector<std::future<fs::path>> results;
    for (int i = 0; i < 8; ++i) {
        results.push_back(std::async(std::launch::async, [] { return pivra::sessionTempDirectory("shared"); }));
    }
    std::set<fs::path> folders;
    for (auto& result : results) folders.insert(result.get());
    EXPECT_EQ(folders.size(), 1u);
}

}  // namespace
