#include "ui/upload_link.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace {

using Entries = std::map<std::string, std::string>;

TEST(UploadLink, IsTheOneOfTheUploadedRevision) {
    // Without another answer there is none.
    const std::pair<Entries, std::string> cases[] = {
        {{}, ""},
        {{{"revisionId", "7"}, {"a", "https://p/m?a=1&revisionId=7#top"}}, "https://p/m?a=1&revisionId=7#top"},
        {{{"revision_id", "7"}, {"a", "http://h/?revision_id=7"}}, "http://h/?revision_id=7"},
        {{{"revisionId", "7"}, {"a", "https://p/?revisionId=6"}, {"b", "https://p/?revisionId=7"}},
         "https://p/?revisionId=7"},
        {{{"revisionId", "7"}, {"a", "https://p/?revisionId=77"}}, ""},
        {{{"revisionId", "a/b"}, {"a", "https://p/?revision%49d=a%2Fb"}}, "https://p/?revision%49d=a%2Fb"},
        {{{"revisionId", "7%4"}, {"a", "https://p/?revisionId=7%4"}}, "https://p/?revisionId=7%4"},
        {{{"revisionId", "7"}, {"a", "https://p/#?revisionId=7"}}, ""},
        {{{"revisionId", "7"}, {"a", "https://p/revisionId=7"}}, ""},
        {{{"m", R"({"revisionId":7,"url":"https://p/m/7"})"}}, "https://p/m/7"},
        {{{"revision_id", "7"}, {"m", R"({"revision_id":"7","url":"https://p/m"})"}}, "https://p/m"},
        {{{"m", R"({"revisionId":7,"picture":"https://p/7.png","page":"https://p/?revisionId=7"})"}},
         "https://p/?revisionId=7"},
        {{{"i", R"({"revisionId":7})"}, {"a", "https://p/?revisionId=7"}, {"b", "https://p/?revisionId=8"}},
         "https://p/?revisionId=7"},
        // No revision is named.
        {{{"a", "https://p/?revisionId=9"}}, "https://p/?revisionId=9"},
        {{{"a", "https://p/?revisionId=8"}, {"b", "https://p/?revisionId=9"}}, ""},
        // Two are named.
        {{{"revisionId", "7"}, {"revision_id", "8"}, {"a", "https://p/?revisionId=9"}}, ""},
    };
    for (const auto& [entries, link] : cases) {
        EXPECT_EQ(ui::uploadLink(entries).value_or(""), link) << testing::PrintToString(entries);
    }
}

}  // namespace
