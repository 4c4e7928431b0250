// Parts in the stand-in host, with the plug-in's log and what it writes to the parts.
#pragma once

#include <config/properties.h>
#include <devkit/gate.h>
#include <devkit/live_objects.h>
#include <devkit/session.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/remove_tree.h>
#include <support/plugin_folder.h>
#include <traceability/traceable_id.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace parts_test {

/// One plug-in folder a process: the process keeps the temporary folder that it found first.
class FolderEnvironment : public testing::Environment {
 public:
    void SetUp() override { folder = std::make_unique<test_support::PluginFolder>(); }
    void TearDown() override { folder.reset(); }

    static inline std::unique_ptr<test_support::PluginFolder> folder;
};

inline testing::Environment* const folderEnvironment = testing::AddGlobalTestEnvironment(new FolderEnvironment);

inline constexpr const char* uuid = "0123abcd-4567-89ab-CDEF-0123456789aB";
inline constexpr const char* otherUuid = "fedcba98-7654-4210-8edc-ba9876543210";

class PartsTest : public testing::Test {
 protected:
    PartsTest() {
        gate.reset();
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
        EXPECT_THAT(gate.violations(), testing::IsEmpty());
        EXPECT_EQ(gate.bracketDepth(), 0);
        EXPECT_EQ(devkit::liveObjects().saveStatuses, 0);
        EXPECT_EQ(devkit::liveObjects().builders, 0);
        session.reset();
        platform::removeTree(folder.path() / "models");
    }

    /// The log's lines as "INFO text", without the one about its level.
    std::vector<std::string> log() const {
        std::vector<std::string> lines;
        for (const std::string& line : folder.logLines()) {
            const auto levelEnd = line.find(']');
            const auto text = line.substr(std::string("] [Pivra] ").size() + levelEnd);
            if (text.rfind("Log level set", 0) != 0) lines.push_back(line.substr(1, levelEnd - 1) + " " + text);
        }
        return lines;
    }

    /// The log's lines that begin with `head`, level first.
    std::vector<std::string> logLinesOf(const std::string& head) const {
        std::vector<std::string> lines;
        for (const std::string& line : log()) {
            if (line.rfind(head, 0) == 0) lines.push_back(line);
        }
        return lines;
    }

    std::size_t calls(const std::string& name) const {
        const auto found = gate.counts().find(name);
        return found == gate.counts().end() ? 0 : found->second;
    }

    NXOpen::BasePart* object(const std::string& name) { return session.object(name); }

    test_support::PluginFolder& folder = *FolderEnvironment::folder;
    devkit::Gate& gate = devkit::Gate::instance();
    devkit::Session& session = devkit::Session::instance();
    std::vector<std::string> writes;  ///< "attribute-written bolt value", "part-saved bolt", …
};

}  // namespace parts_test
