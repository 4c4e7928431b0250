#include <config/properties.h>
#include <config/service_environment.h>
#include <config/service_presets.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/plugin_folder.h>

#include <cctype>
#include <set>

namespace {

using config::SelectServiceEnvironment;
using config::ServerOverrides;

const nlohmann::json production = SelectServiceEnvironment({});

TEST(ServiceEnvironment, isChosenByNameInAnyCase) {
    const std::pair<const char*, const char*> sameAs[] = {
        {"prod", ""},         {"production", ""},         {"us-prod", ""},
        {" us_prod", ""},     {"US_PROD", "us_prod"},     {"STAGING", "staging"},
        {"stage", "staging"}, {"Us_Stage", "us_staging"}, {"us_STAGING", "us_staging"}};
    for (const auto& [name, canonical] : sameAs) {
        EXPECT_EQ(SelectServiceEnvironment({name, "", "", "", ""}),
                  SelectServiceEnvironment({canonical, "", "", "", ""}))
            << name;
    }
    std::set<std::string> different;
    for (const char* name : {"", "us_prod", "staging", "us_staging"}) {
        for (const auto& member : SelectServiceEnvironment({name, "", "", "", ""})) different.insert(member.dump());
    }
    EXPECT_EQ(different.size(), 16u);
}

TEST(ServiceEnvironment, presetsHaveTheFormsThatTheClientTakes) {
    for (const char* name : {"", "us_prod", "staging", "us_staging"}) {
        const auto environment = SelectServiceEnvironment({name, "", "", "", ""});
        ASSERT_EQ(environment.size(), 4u);
        for (const char* member : {"LoginURL", "ServerURL"}) {
            EXPECT_THAT(environment.at(member).get<std::string>(),
                        testing::AllOf(testing::StartsWith("https://"), testing::EndsWith("/")));
        }
        const auto audience = environment.at("Audience").get<std::string>();
        ASSERT_THAT(audience, testing::StartsWith("https://"));
        EXPECT_EQ(audience.substr(audience.find('/', 8)), "/api/v2/");
        const auto clientId = environment.at("ClientID").get<std::string>();
        EXPECT_EQ(clientId.size(), 32u);
        for (const char letter : clientId) EXPECT_TRUE(std::isalnum(static_cast<unsigned char>(letter))) << clientId;
    }
}

TEST(ServiceEnvironment, eachOverrideReplacesItsMemberAsItStands) {
    const std::tuple<std::string ServerOverrides::*, const char*> cases[] = {{&ServerOverrides::loginUrl, "LoginURL"},
                                                                             {&ServerOverrides::serverUrl, "ServerURL"},
                                                                             {&ServerOverrides::clientId, "ClientID"},
                                                                             {&ServerOverrides::audience, "Audience"}};
    for (const auto& [field, member] : cases) {
        ServerOverrides overrides;
        overrides.server = "staging";
        auto expected = SelectServiceEnvironment(overrides);
        overrides.*field = "no address";
        expected[member] = "no address";
        EXPECT_EQ(SelectServiceEnvironment(overrides), expected);
    }
}

TEST(ServiceEnvironment, overridesComeFromTheProperties) {
    const test_support::PluginFolder folder;
    folder.writeProperties(
        "pivra_nx_server = s\npivra_nx_login_url = l\npivra_nx_server_url = u\n"
        "pivra_nx_client_id = c\npivra_nx_audience = a\n");
    config::LoadProperties();
    const auto overrides = config::ReadServerOverrides();
    EXPECT_EQ(overrides.server, "s");
    EXPECT_EQ(SelectServiceEnvironment(overrides),
              (nlohmann::json{{"LoginURL", "l"}, {"ServerURL", "u"}, {"ClientID", "c"}, {"Audience", "a"}}));
    folder.writeProperties("");
    config::LoadProperties();
    EXPECT_EQ(SelectServiceEnvironment(config::ReadServerOverrides()), production);
}

}  // namespace
