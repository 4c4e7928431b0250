#include <gtest/gtest.h>
#include <support/plugin_folder.h>
#include "platform/environment.h"
#include "platform/error_text.h"
#include "platform/text.h"
#include "platform/text_encoding.h"
#include "platform/windows_support.h"

#include <stdexcept>

namespace {

namespace fs = std::filesystem;

TEST(Utf8, tellsCharactersFromOtherBytes) {
    const std::pair<std::string, std::size_t> cases[] = {
        {"", 0},
        {"\xC3\xA4z", 2},
        {"\xE6\x97\xA5", 3},
        {"\xF4\x8F\xBF\xBF", 4},
        {"\xC3", 0},              // cut off
        {"\x84", 0},              // begins in the middle
        {"\xC0\xAF", 0},          // overlong
        {"\xE0\x9F\x80", 0},      // overlong
        {"\xED\xA0\x80", 0},      // a surrogate
        {"\xF4\x90\x80\x80", 0},  // beyond the last character
    };
    for (const auto& [text, length] : cases) EXPECT_EQ(platform::utf8CharacterLength(text), length) << text;
}

TEST(ErrorText, comesOutInUtf8) {
    // As with a compiler whose messages are in the western code page and whose paths are in UTF-8.
    EXPECT_EQ(platform::utf8FromSystemText("Zugriff verweigert f\xFCr [\xE6\x97\xA5.prt]"),
              "Zugriff verweigert f\xC3\xBCr [\xE6\x97\xA5.prt]");
    EXPECT_EQ(platform::errorOf([] { throw std::runtime_error("Ger\xE4t"); }), "Ger\xC3\xA4t");
    EXPECT_EQ(platform::errorOf([] { throw 1; }), "unknown");
    EXPECT_FALSE(platform::errorOf([] {}).has_value());
}

TEST(ReparsePoints, areLinksWhenTheyStandForAName) {
    EXPECT_TRUE(platform::isLinkTag(0xA000000C)) << "symbolic link";
    EXPECT_TRUE(platform::isLinkTag(0xA0000003)) << "mount point";
    EXPECT_TRUE(platform::isLinkTag(0)) << "unknown";
    EXPECT_FALSE(platform::isLinkTag(0x80000013)) << "deduplicated";
    EXPECT_FALSE(platform::isLinkTag(0x9000001A)) << "in a cloud";
    EXPECT_FALSE(platform::isLinkTag(0x80000017)) << "compressed by the system";
}

TEST(TextEncoding, namesComeBackFromUtf8AndTheCodePage) {
    const std::pair<const char*, fs::path> cases[] = {{"", {}}, {"\xE6\x97\xA5\xF0\x9F\x94\xA9", u8"日🔩"}};
    for (const auto& [utf8, path] : cases) {
        EXPECT_EQ(platform::utf8FromPath(path), utf8);
        EXPECT_EQ(platform::pathFromUtf8(utf8), path);
    }
    const fs::path size = u8"Größe.prt";
    EXPECT_EQ(platform::pathFromFileSystemText(platform::fileSystemTextFromPath(size)), size);
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

}  // namespace
