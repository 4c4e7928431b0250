// Native and managed parts in the stand-in host, with real files, and the folder that they are exported into.
#pragma once

#include <support/parts_fixture.h>
#include "export/assembly_checks.h"
#include "export/export_run.h"
#include "export/session_temp_directories.h"
#include "platform/text_encoding.h"

#include <filesystem>

namespace export_test {

namespace fs = std::filesystem;

using pivra::ExportRun;
using pivra::IdentifierForm;
using platform::utf8FromPath;
using test_support::readFile;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ExportTest : public test_support::PartsTest {
 protected:
    ~ExportTest() override {
        pivra::cleanupSessionTempDirectory();
        for (const auto& entry : fs::directory_iterator(folder.temp())) platform::removeTree(entry.path());
    }

    static std::string idOf(const std::string& name) {
        const std::string tail = std::to_string(std::hash<std::string>()(name) % 1'000'000 + 1'000'000);
        return "00000000-0000-4000-8000-00000" + tail;
    }

    /// A part whose file "models/<file>" has `content`; without a file name the part was never saved.
    devkit::PartData& addNative(const std::string& name, const std::string& file, const std::string& content = "prt") {
        devkit::PartData part;
        part.name = name;
        part.leaf = name;
        part.uniqueIdentifier = idOf(name);
        if (!file.empty()) part.fullPath = utf8FromPath(folder.writeFile(fs::path("models") / file, content));
        return session.addPart(part);
    }
    devkit::PartData& addNative(const std::string& name) { return addNative(name, name + ".prt"); }

    /// A part under Teamcenter with that number, revision A, configured revision B.
    devkit::PartData& addManaged(const std::string& number, const std::string& content = "clone") {
        devkit::PartData part;
        part.name = number;
        part.uniqueIdentifier = idOf(number);
        part.managed = devkit::ManagedItem{number, "A", "", "", "B"};
        part.content = content;
        return session.addPart(part);
    }

    // The checks of an assembly, each in a run of its own.
    static bool hasUnsavedComponent(NXOpen::BasePart* part) {
        ExportRun run(IdentifierForm::display);
        return pivra::hasUnsavedComponent(part, run);
    }
    static bool hasUnsupportedComponent(NXOpen::BasePart* part) {
        ExportRun run(IdentifierForm::display);
        return pivra::hasUnsupportedComponent(part, run);
    }
    static bool hasUnsavedChanges(NXOpen::BasePart* part, bool isDrawing) {
        ExportRun run(IdentifierForm::display);
        return pivra::hasUnsavedChanges(part, isDrawing, run);
    }

    static void place(devkit::PartData& assembly, const std::vector<std::string>& parts) {
        for (const auto& part : parts) assembly.components.push_back({"", part, true});
    }

    NXOpen::BasePart* display(const devkit::PartData& part) {
        session.setDisplayed(part.name);
        return object(part.name);
    }

    /// The folder that the exports of a run for `part` go into.
    static fs::path exportFolder(const devkit::PartData& part) {
        return pivra::sessionTempDirectory(part.uniqueIdentifier);
    }

    static void setWrittenBefore(const fs::path& file) {
        fs::last_write_time(file, fs::last_write_time(file) - std::chrono::seconds(10));
    }
};

}  // namespace export_test
