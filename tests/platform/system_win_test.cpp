// What only Windows can be asked.
#include <gtest/gtest.h>
#include <support/plugin_folder.h>
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/remove_tree.h"
#include "platform/text_encoding.h"

#include <windows.h>

#include <system_error>

namespace {

TEST(TextEncodingOnWindows, whatHasNoPlaceInUtf8IsReplaced) {
    EXPECT_EQ(platform::utf8FromPath(L"a\xD800z"), "a\xEF\xBF\xBDz");
    EXPECT_EQ(platform::pathFromUtf8("a\xFFz"), std::filesystem::path(L"a\xFFFDz"));
}

TEST(TextEncodingOnWindows, whatTheCodePageLacksIsNotGuessed) {
    if (GetACP() != 1252) GTEST_SKIP() << "Not the western code page.";
    // The second has a likeness there, a plain A.
    for (const wchar_t* name : {L"\x65E5", L"\x0100"}) {
        EXPECT_THROW(platform::fileSystemTextFromPath(name), std::system_error);
    }
}

TEST(EnvironmentOnWindows, anEmptyVariableIsSet) {
    ASSERT_TRUE(SetEnvironmentVariableW(L"PIVRA_TEST_EMPTY", L""));
    const auto value = platform::environmentPath("PIVRA_TEST_EMPTY");
    ASSERT_TRUE(value.has_value());
    EXPECT_TRUE(value->empty());
}

TEST(FilesOnWindows, writeTimesKeepTheirHundredNanoseconds) {
    const test_support::PluginFolder folder;
    const auto file = folder.writeFile("file", "x");
    const HANDLE handle =
        CreateFileW(file.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(handle, INVALID_HANDLE_VALUE);
    // 2024-03-01 00:00:00.1234567 UTC
    const ULONGLONG ticks = 133'537'248'001'234'567;
    const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    EXPECT_TRUE(SetFileTime(handle, nullptr, nullptr, &time));
    CloseHandle(handle);
    const auto sinceEpoch = platform::fileFacts(file)->written.time_since_epoch();
    EXPECT_EQ(std::chrono::nanoseconds(sinceEpoch).count(), 1'709'251'200'123'456'700);
}

TEST(FilesOnWindows, takesNamesOverTheOldLimit) {
    const test_support::PluginFolder folder;
    auto deep = folder.path();
    for (int level = 0; level < 6; ++level) deep /= std::wstring(50, L'd');
    ASSERT_FALSE(platform::createDirectories(deep));
    ASSERT_FALSE(platform::createDirectories(deep)) << "it is there";
    EXPECT_TRUE(platform::appendToFile(deep / "log", "line"));
    std::error_code error;
    EXPECT_EQ(platform::pathKind(deep / "log", error), platform::PathKind::other);
    EXPECT_TRUE(platform::createDirectories(deep / "log")) << "a file lies there";
    const auto file = folder.writeFile("file", "bytes");
    platform::copyFile(file, deep / L"Gehäuse 1.prt");
    EXPECT_TRUE(platform::isRegularFile(deep / L"Gehäuse 1.prt"));
    EXPECT_EQ(platform::fileSizeBytes(deep / L"Gehäuse 1.prt"), 5u);
    EXPECT_EQ(platform::fileFacts(deep / L"Gehäuse 1.prt")->written, platform::fileFacts(file)->written);
    EXPECT_THROW(platform::fileSizeBytes(deep / L"missing"), std::filesystem::filesystem_error);
}

TEST(RemoveTreeOnWindows, takesNamesLiterally) {
    const test_support::PluginFolder folder;
    const auto tree = folder.path() / "tree";
    const std::wstring literal = L"\\\\?\\" + tree.native();
    ASSERT_TRUE(CreateDirectoryW(literal.c_str(), nullptr));
    ASSERT_TRUE(CreateDirectoryW((literal + L"\\dot.").c_str(), nullptr));
    EXPECT_TRUE(platform::appendToFile(literal + L"\\dot.\\blank ", "x"));
    EXPECT_FALSE(platform::removeTree(tree));
    EXPECT_FALSE(std::filesystem::exists(tree));
}

}  // namespace
