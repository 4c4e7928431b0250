#include <ui/upload_link.h>

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace {

using Entries = std::map<std::string, std::string>;
constexpr const char* none = "";

TEST(UploadLink, IsTheOneOfTheUploadedRevision) {
    const struct {
        const char* what;
        Entries entries;
        std::string expected;
    } cases[] = {
        {"nothing at all", {}, none},
        {"an id without a link", {{"revisionId", "7"}}, none},
        {"query parameter",
         {{"revisionId", "7"}, {"link", "https://pivra/m?a=1&revisionId=7#top"}},
         "https://pivra/m?a=1&revisionId=7#top"},
        {"the other spelling", {{"revision_id", "7"}, {"x", "http://h/?revision_id=7"}}, "http://h/?revision_id=7"},
        {"another revision's link", {{"revisionId", "7"}, {"link", "https://pivra/?revisionId=8"}}, none},
        {"the right one of two",
         {{"revisionId", "7"}, {"a", "https://pivra/?revisionId=6"}, {"b", "https://pivra/?revisionId=7"}},
         "https://pivra/?revisionId=7"},
        {"a longer id is another", {{"revisionId", "7"}, {"a", "https://pivra/?revisionId=77"}}, none},
        {"percent-encoded",
         {{"revisionId", "a/b"}, {"a", "https://p/?revision%49d=a%2Fb"}},
         "https://p/?revision%49d=a%2Fb"},
        {"broken encoding", {{"revisionId", "7%4"}, {"a", "https://p/?revisionId=7%4"}}, "https://p/?revisionId=7%4"},
        {"id in the fragment", {{"revisionId", "7"}, {"a", "https://p/#?revisionId=7"}}, none},
        {"id in the path", {{"revisionId", "7"}, {"a", "https://p/revisionId=7"}}, none},
        {"object", {{"model", R"({"revisionId":7,"url":"https://p/m/7"})"}}, "https://p/m/7"},
        {"object and id",
         {{"revision_id", "7"}, {"model", R"({"revision_id":"7","url":"https://p/m"})"}},
         "https://p/m"},
        {"object prefers the address with the id",
         {{"m", R"({"revisionId":7,"picture":"https://p/7.png","page":"https://p/?revisionId=7"})"}},
         "https://p/?revisionId=7"},
        {"id in an object of its own",
         {{"info", R"({"revisionId":7})"}, {"a", "https://p/?revisionId=7"}, {"b", "https://p/?revisionId=8"}},
         "https://p/?revisionId=7"},
        {"no id named, one link", {{"a", "https://p/?revisionId=9"}}, "https://p/?revisionId=9"},
        {"no id named, two ids", {{"a", "https://p/?revisionId=8"}, {"b", "https://p/?revisionId=9"}}, none},
        {"two ids named, a link of a third",
         {{"revisionId", "7"}, {"revision_id", "8"}, {"a", "https://p/?revisionId=9"}},
         none},
        {"a plain address", {{"revisionId", "7"}, {"a", "https://p/"}}, none},
    };
    for (const auto& c : cases) EXPECT_EQ(ui::uploadLink(c.entries).value_or(none), c.expected) << c.what;
}

TEST(UploadLink, IsNeverAnythingButAWebAddress) {
    const char* hostile[] = {"javascript:open('?revisionId=7')",
                             "file:///c:/x.exe?revisionId=7",
                             "\\\\host\\share\\x.exe?revisionId=7",
                             "ftp://h/?revisionId=7",
                             "calc.exe?revisionId=7",
                             " https://h/?revisionId=7",
                             "https://h/?revisionId=7\" --flag",
                             "https://h/\r\n?revisionId=7",
                             "https:?revisionId=7",
                             "httpsx://h/?revisionId=7",
                             "https://h/\u202e?revisionId=7"};
    for (const std::string address : hostile) {
        EXPECT_FALSE(ui::uploadLink({{"revisionId", "7"}, {"a", address}})) << address;
    }
    EXPECT_FALSE(ui::uploadLink({{"m", R"({"revisionId":7,"url":"javascript:alert"})"}}));
    for (const char* value : {"{", "[1]", "\"x\"", "null", "{\"revisionId\":{}}", "{\"revisionId\":\"\"}", "\xff"}) {
        EXPECT_FALSE(ui::uploadLink({{"m", value}})) << value;
    }
}

}  // namespace
