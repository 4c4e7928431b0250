// A fresh stand-in host with a folder for its parts, layouts and exports.
#pragma once

#include <devkit/call_interceptor.h>
#include <devkit/session.h>
#include <gmock/gmock.h>
#include <support/plugin_folder.h>
#include <uf.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace devkit_test {

class HostTest : public testing::Test {
 protected:
    HostTest() {
        interceptor.reset();
        session.reset();
        session.onEvent = [this](const std::string& kind, const nlohmann::json& facts) {
            events.push_back(kind + " " + facts.dump());
        };
    }
    ~HostTest() override { session.reset(); }

    devkit::PartData& addPart(const std::string& name) const {
        devkit::PartData part;
        part.name = name;
        return session.addPart(part);
    }
    void load(const std::string& json) const { devkit::loadSession(nlohmann::json::parse(json), folder.path()); }

    test_support::PluginFolder folder;
    devkit::CallInterceptor& interceptor = devkit::CallInterceptor::instance();
    devkit::Session& session = devkit::Session::instance();
    std::vector<std::string> events;
};

/// The bracket of the C interface.
struct Bracket {
    Bracket() { UF_initialize(); }
    ~Bracket() { UF_terminate(); }
    Bracket(const Bracket&) = delete;
    Bracket& operator=(const Bracket&) = delete;
};

}  // namespace devkit_test
