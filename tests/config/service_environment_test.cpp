#include "config/service_environment.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/plugin_folder.h>
#include "config/properties.h"

#include <set>

namespace {

using config::SelectServiceEnvironment;

nlohmann::json selectedBy(const std::string& server) {
    return SelectServiceEnvironment({server, "", "", "", ""});
}

TEST(ServiceEnvironment, isChosenByNameInAnyCase) {
    const std::pair<const char*, const char*> sameAs[] = {
        {"prod", ""},         {"production", ""},         {"us-prod", ""},
        {" us_prod", ""},     {"US_PROD", "us_prod"},     {"STAGING", "staging"},
        {"stage", "staging"}, {"Us_Stage", "us_staging"}, {"us_STAGING", "us_staging"}};
    for (const auto& [name, canonical] : sameAs) EXPECT_EQ(selectedBy(name), selectedBy(canonical)) << name;
}

TEST(ServiceEnvironment, presetsDifferAndHaveTheFormsThatTheClientTakes) {
    std::set<std::string> different;
    for (const char* name : {"", "us_prod", "staging", "us_staging"}) {
        const auto environment = selectedBy(name);
        for (const auto& member : environment) different.insert(member);
        for (const char* member : {"LoginURL", "ServerURL", "Audience"}) {
            EXPECT_THAT(environment.at(member).get<std::string>(),
                        testing::AllOf(testing::StartsWith("https://"), testing::EndsWith("/")));
        }
        EXPECT_EQ(environment.at("ClientID").get<std::string>().size(), 32u);
    }
    EXPECT_EQ(different.size(), 16u);
}

TEST(ServiceEnvironment, eachPropertyReplacesItsMemberAsItStands) {
    const test_support::PluginFolder folder;
    const std::pair<const char*, const char*> cases[] = {{"pivra_nx_login_url", "LoginURL"},
                                                         {"pivra_nx_server_url", "ServerURL"},
                                                         {"pivra_nx_client_id", "ClientID"},
                                                         {"pivra_nx_audience", "Audience"}};
    for (const auto& [key, member] : cases) {
        folder.writeProperties(std::string("pivra_nx_server = staging\n") + key + " = no address\n");
        config::LoadProperties();
        auto expected = selectedBy("staging");
        expected[member] = "no address";
        EXPECT_EQ(SelectServiceEnvironment(config::ReadServerOverrides()), expected);
    }
}

}  // namespace
