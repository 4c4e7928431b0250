#include "platform/files.h"
#include <gtest/gtest.h>
#include <support/directory_link.h>
#include <support/plugin_folder.h>

#include <fstream>

namespace {

namespace fs = std::filesystem;
using test_support::readFile;

class Files : public testing::Test {
 protected:
    test_support::PluginFolder folder_;
    fs::path missing_ = folder_.path() / "missing" / "file";
};

TEST_F(Files, appendCreatesAndAddsBesideOtherUsers) {
    const auto file = folder_.path() / u8"Größe 日本.log";
    EXPECT_TRUE(platform::appendToFile(file, "one\r\n"));
    std::ifstream reader(file, std::ios::binary);
    std::ofstream writer(file, std::ios::binary | std::ios::app);
    EXPECT_TRUE(platform::appendToFile(file, std::string_view("\xFF\0two", 5)));
    EXPECT_EQ(readFile(file), std::string("one\r\n\xFF\0two", 10));
    EXPECT_FALSE(platform::appendToFile(folder_.path(), "x"));
    EXPECT_FALSE(platform::appendToFile(missing_, "x"));
}

TEST_F(Files, copyReplacesAndKeepsTheWriteTime) {
    const auto from = folder_.writeFile(u8"från.prt", "new");
    fs::last_write_time(from, fs::file_time_type::clock::now() - std::chrono::hours(48));
    const auto to = folder_.writeFile("to.prt", "old and longer");
    platform::copyFile(from, to);
    EXPECT_EQ(readFile(to), "new");
    EXPECT_EQ(platform::fileFacts(to)->written, platform::fileFacts(from)->written);
}

TEST_F(Files, failuresNameOperationAndPaths) {
    const auto to = folder_.writeFile("to.prt", "kept");
    try {
        platform::copyFile(missing_, to);
        ADD_FAILURE() << "copied a missing file";
    } catch (const fs::filesystem_error& error) {
        EXPECT_NE(std::string(error.what()).find("copy_file"), std::string::npos);
        EXPECT_EQ(error.path1(), missing_);
        EXPECT_EQ(error.path2(), to);
        EXPECT_TRUE(error.code());
    }
    EXPECT_EQ(readFile(to), "kept");
    EXPECT_THROW(platform::fileSizeBytes(missing_), fs::filesystem_error);
}

TEST_F(Files, regularFilesAreNeitherDirectoriesNorLinks) {
    EXPECT_TRUE(platform::isRegularFile(folder_.writeFile(u8"Größe", "x")));
    const test_support::DirectoryLink link(folder_.path() / "link", folder_.temp());
    for (const auto& path : {folder_.path(), missing_, fs::path(), folder_.path() / "link"}) {
        EXPECT_FALSE(platform::isRegularFile(path)) << path;
        EXPECT_FALSE(platform::fileFacts(path)) << path;
    }
}

}  // namespace
