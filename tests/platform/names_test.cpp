#include <gtest/gtest.h>
#include <platform/environment.h>
#include <platform/module.h>
#include <platform/temp_path.h>
#include <platform/text_encoding.h>
#include <support/plugin_folder.h>

#include <stdexcept>

namespace {

namespace fs = std::filesystem;

TEST(TextEncoding, namesComeBackFromUtf8) {
    const struct {
        const char* utf8;
        fs::path path;
    } cases[] = {{"", {}},
                 {"bolt.prt", "bolt.prt"},
                 {"Gr\xC3\xB6\xC3\x9F"
                  "e",
                  u8"Größe"},
                 {"\xE6\x97\xA5\xF0\x9F\x94\xA9", u8"日🔩"}};
    for (const auto& [utf8, path] : cases) {
        EXPECT_EQ(platform::utf8FromPath(path), utf8);
        EXPECT_EQ(platform::pathFromUtf8(utf8), path);
    }
}

TEST(TextEncoding, namesComeBackFromTheFileSystemsCodePage) {
    for (const fs::path& path : {fs::path(), fs::path("bolt.prt"), fs::path(u8"Größe.prt")}) {
        EXPECT_EQ(platform::pathFromFileSystemText(platform::fileSystemTextFromPath(path)), path);
    }
}

TEST(Environment, readsValuesOfAnyLength) {
    constexpr const char* name = "PIVRA_TEST_VARIABLE";
    EXPECT_FALSE(platform::environmentPath(name).has_value());
    for (const fs::path& value : {fs::path("x"), fs::path(std::string(259, 'a')), fs::path(std::string(260, 'b')),
                                  fs::path(std::string(5000, 'c')), fs::path(u8"日本/Größe")}) {
        test_support::setEnvironment(name, value);
        EXPECT_EQ(platform::environmentPath(name), value);
    }
    test_support::setEnvironment(name, {});
    EXPECT_FALSE(platform::environmentPath(name).has_value());
}

TEST(TempPath, isTheUsersUnlessItDoesNotFit) {
    const test_support::PluginFolder folder;
    ASSERT_TRUE(platform::userTempDirectory().has_value());
    EXPECT_EQ(*platform::userTempDirectory() / "", folder.temp() / "");  // with and without a separator at its end
    for (const char* name : {"TMP", "TMPDIR"}) {
        test_support::setEnvironment(name, folder.path() / std::string(300, 't'));
    }
    EXPECT_FALSE(platform::userTempDirectory().has_value());
}

TEST(ModuleDirectory, isTheModulesParent) {
    const test_support::PluginFolder folder;
#ifdef _WIN32
    const std::pair<fs::path, fs::path> cases[] = {{L"C:\\NX\\app\\x.dll", L"C:\\NX\\app"},
                                                   {L"C:\\NX\\\\x.dll", L"C:\\NX"},
                                                   {L"C:\\NX/x.dll", L"C:\\NX"},
                                                   {L"C:\\x.dll", L"C:\\"}};
#else
    const std::pair<fs::path, fs::path> cases[] = {{"/nx/app/x.so", "/nx/app"}, {"/nx//x.so", "/nx"}, {"/x.so", "/"}};
#endif
    for (const auto& [file, directory] : cases) {
        test_support::setModuleFileName(file);
        EXPECT_EQ(platform::moduleDirectory().native(), directory.native());
    }
    test_support::setModuleFileName({});
    EXPECT_THROW(platform::moduleDirectory(), std::runtime_error);
}

}  // namespace
