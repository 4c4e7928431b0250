// Parts in the stand-in host, with the plug-in's log and what it writes to the parts.
#pragma once

#include <devkit/call_interceptor.h>
#include <devkit/session.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/plugin_folder.h>
#include "config/properties.h"
#include "platform/remove_tree.h"
#include "traceability/pivra_id_attribute.h"
#include "traceability/traceable_id.h"

#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace test_support {

/// One plug-in folder a process: the process keeps the temporary folder that it found first.
class FolderEnvironment : public testing::Environment {
 public:
    void SetUp() override { folder = std::make_unique<PluginFolder>(); }
    void TearDown() override { folder.reset(); }

    static inline std::unique_ptr<PluginFolder> folder;
};

inline testing::Environment* const folderEnvironment = testing::AddGlobalTestEnvironment(new FolderEnvironment);

inline constexpr const char* uuid = "0123abcd-4567-89ab-CDEF-0123456789aB";
inline constexpr const char* otherUuid = "fedcba98-7654-4210-8edc-ba9876543210";

class PartsTest : public testing::Test {
 protected:
    PartsTest() {
        interceptor.reset();
        session.reset();
        session.onEvent = [this](const std::string& kind, const nlohmann::json& facts) {
            writes.push_back(kind + " " + facts.value("part", "") + (facts.contains("value") ? " " : "") +
                             facts.value("value", ""));
        };
        // Whatever an earlier test had, the setting is logged when it is read next.
        folder.writeProperties("pivra_fix_legacy_id = on\n");
        config::LoadProperties();
        pivra::fixLegacyIdEnabled();
        platform::removeTree(folder.path() / "logs");
        pivra::clearTraceabilityFailureMessage();
        pivra::clearTraceabilitySavedPart();
        folder.startLogging();
    }

    ~PartsTest() override {
        EXPECT_THAT(interceptor.violations(), testing::IsEmpty());
        EXPECT_EQ(interceptor.bracketDepth(), 0);
        EXPECT_EQ(devkit::liveObjects(), 0);
        session.reset();
        platform::removeTree(folder.path() / "models");
    }

    /// The log's lines as "INFO text", cut before the first colon; without the one about the log's level.
    std::vector<std::string> heads() const {
        std::vector<std::string> heads;
        for (const std::string& line : folder.logLines()) {
            const auto levelEnd = line.find(']');
            const auto text = line.substr(levelEnd + std::string("] [Pivra] ").size());
            if (text.starts_with("Log level set")) continue;
            heads.push_back(line.substr(1, levelEnd - 1) + " " + text.substr(0, text.find(": ")));
        }
        return heads;
    }

    std::size_t calls(const std::string& name) const {
        const auto found = interceptor.counts().find(name);
        return found == interceptor.counts().end() ? 0 : found->second.count;
    }

    NXOpen::BasePart* object(const std::string& name) { return session.object(name); }

    PluginFolder& folder = *FolderEnvironment::folder;
    devkit::CallInterceptor& interceptor = devkit::CallInterceptor::instance();
    devkit::Session& session = devkit::Session::instance();
    std::vector<std::string> writes;  ///< "attribute-written bolt value", "part-saved bolt", …
};

}  // namespace test_support
