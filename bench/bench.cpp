// What the plug-in's work costs next to a baseline, the least that it could cost, measured alternately in the same run:
// a noisy machine slows both. Of each pair of turns the ratio is taken, and of the ratios the median.
#include <devkit/call_interceptor.h>
#include <devkit/session.h>
#include <support/plugin_folder.h>
#include "config/properties.h"
#include "export/assembly_checks.h"
#include "export/assembly_files.h"
#include "export/managed_clone_export.h"
#include "export/session_temp_directories.h"
#include "logging/log.h"
#include "platform/files.h"
#include "platform/remove_tree.h"
#include "platform/text_encoding.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using Action = std::function<void()>;

double secondsOf(const Action& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Prints how many times the baseline the work takes: the median, and the quarter of the rounds below and above it.
void compare(const char* name, const Action& work, const char* baselineName, const Action& baseline) {
    constexpr std::size_t rounds = 15;
    work();
    baseline();
    std::vector<double> ratios;
    for (std::size_t round = 0; round < rounds; ++round) {
        const double least = secondsOf(baseline);
        ratios.push_back(secondsOf(work) / least);
    }
    std::sort(ratios.begin(), ratios.end());
    std::printf("%-52s %6.2f times %s (%.2f to %.2f)\n", name, ratios[rounds / 2], baselineName, ratios[rounds / 4],
                ratios[3 * rounds / 4]);
}

class Bench {
 public:
    Bench() {
        folder_.startLogging("pivra_nx_log_level = info\n");
        config::LoadProperties();
        fs::create_directory(copies());
    }

    void logLine();
    void properties();
    void assembly();
    void checks();
    void managedAssembly();

 private:
    static constexpr std::size_t parts = 500;
    static constexpr std::size_t placements = 5'000;

    fs::path copies() const { return folder_.path() / "copies"; }
    static std::string name(std::size_t part) { return "part " + std::to_string(part); }
    NXOpen::BasePart* addAssembly(const std::function<void(devkit::PartData&)>& complete);

    test_support::PluginFolder folder_;
    devkit::Session& session_ = devkit::Session::instance();
    std::string content_ = std::string(16'384, 'x');
};

NXOpen::BasePart* Bench::addAssembly(const std::function<void(devkit::PartData&)>& complete) {
    session_.reset();
    devkit::PartData root;
    root.name = "root";
    for (std::size_t place = 0; place < placements; ++place) root.components.push_back({"", name(place % parts), true});
    complete(root);
    session_.addPart(root);
    for (std::size_t index = 0; index < parts; ++index) {
        devkit::PartData part;
        part.name = name(index);
        complete(part);
        session_.addPart(part);
    }
    session_.setDisplayed("root");
    return session_.object("root");
}

void Bench::logLine() {
    const std::string text(120, 'x');
    compare(
        "1,000 lines of the log",
        [&] {
            for (int i = 0; i < 1'000; ++i) logging::LogInfo(text);
        },
        "appending as many bytes",
        [&] {
            for (int i = 0; i < 1'000; ++i) platform::appendToFile(copies() / "plain.log", text);
        });
}

void Bench::properties() {
    std::string text;
    for (int i = 0; i < 200; ++i) text += "# a comment\npivra_setting_" + std::to_string(i) + " = value\n";
    folder_.writeProperties(text);
    compare(
        "reading 200 settings",
        [] {
            for (int i = 0; i < 50; ++i) config::LoadProperties();
        },
        "reading the file",
        [] {
            for (int i = 0; i < 50; ++i) {
                std::ostringstream whole;
                whole << std::ifstream(config::PropertiesFilePath(), std::ios::binary).rdbuf();
            }
        });
}

void Bench::assembly() {
    auto* root = addAssembly([&](devkit::PartData& part) {
        part.uniqueIdentifier = part.name;
        part.fullPath = platform::utf8FromPath(folder_.writeFile(part.name + ".prt", content_));
    });
    const auto collect = [&] {
        pivra::ExportRun run(pivra::IdentifierForm::display, "assembly");
        pivra::collectLocalUploadFiles(root, run);
    };
    const auto copy = [&] {
        for (const auto& part : session_.parts()) {
            const fs::path file = platform::pathFromUtf8(part.fullPath);
            platform::copyFile(file, copies() / file.filename());
        }
    };
    compare("collecting 500 parts in 5,000 places", collect, "copying their files", copy);
    devkit::CallInterceptor::instance().reset();
    collect();
    std::printf("%-52s %6zu calls of the host, %.1f for each place\n", "",
                devkit::CallInterceptor::instance().calls().size(),
                static_cast<double>(devkit::CallInterceptor::instance().calls().size()) / placements);
}

void Bench::checks() {
    auto* root = session_.object("root");
    compare(
        "both checks of these 5,000 places",
        [&] {
            pivra::ExportRun run(pivra::IdentifierForm::display);
            pivra::hasUnsavedComponent(root, run);
            pivra::hasUnsupportedComponent(root, run);
        },
        "asking each file whether it is there",
        [&] {
            for (const auto& part : session_.parts()) platform::isRegularFile(platform::pathFromUtf8(part.fullPath));
        });
}

void Bench::managedAssembly() {
    auto* root = addAssembly([&](devkit::PartData& part) {
        part.uniqueIdentifier = part.name;
        part.managed = devkit::ManagedItem{part.name, "A", "", "", "A"};
        part.content = content_;
    });
    compare(
        "exporting 501 parts of Teamcenter, and collecting them",
        [&] {
            pivra::ExportRun run(pivra::IdentifierForm::display, "managed");
            pivra::collectManagedUploadFiles(root, pivra::exportManagedPart(root, run), run);
        },
        "writing their files",
        [&] {
            for (const auto& part : session_.parts()) folder_.writeFile("copies/" + part.name + ".prt", content_);
        });
    pivra::cleanupSessionTempDirectory();
}

}  // namespace

int main() {
    Bench bench;
    bench.logLine();
    bench.properties();
    bench.assembly();
    bench.checks();
    bench.managedAssembly();
    return 0;
}
