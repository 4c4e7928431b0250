#include <devkit/gate.h>
#include <devkit/live_objects.h>
#include <devkit/session.h>
#include <service/version.h>
#include <support/plugin_folder.h>
#include <support/scripted_host.h>
#include <ui/main_dialog.h>
#include <ui/main_dialog_text.h>

#include <gmock/gmock.h>
#include <map>
#include <stdexcept>

namespace {

using test_support::OpenDialog;
using test_support::ScriptedHost;
using testing::ElementsAre;
using testing::IsEmpty;

/// A signed-in user with three workspaces and a part that can be uploaded; each test changes what it is about.
class MainDialog : public testing::Test {
 protected:
    MainDialog() {
        metadata->fileName = "bolt.prt";
        metadata->fileSizeMb = 1.5;
        metadata->lastModified = "May 04, 2025 - 09:07 PM";
        metadata->sourceFileId = "f3b3c2d0-0000-4000-8000-000000000001";
        workspaces.resize(3);
        setWorkspace(0, 11, "Main");
        setWorkspace(1, 12, "");
        setWorkspace(2, 13, "日本");
        actions.readMetadata = [this] { return metadata; };
        actions.isDrawing = [this] { return isDrawing; };
        actions.fixLegacyIdEnabled = [this] { return fixLegacyId; };
        actions.userName = [] { return "Zoë Ngô"; };
        actions.userEmail = [] { return "zoe@pivra.example"; };
        actions.loadWorkspaces = [this] { return pivra::WorkspaceLoadResult{true, workspaces, ""}; };
        actions.lookupRevision = [this](std::int64_t id, const auto&, const auto&) {
            lookups.push_back(id);
            return pivra::RevisionLookupResult{true, id == 13, "key", lookupFailure};
        };
        actions.signOut = [this] { ++signOuts; };
        actions.isSignedIn = [this] { return signedIn; };
    }

    void setWorkspace(std::size_t index, std::int64_t id, const std::string& name) {
        workspaces[index].id = id;
        workspaces[index].name = name;
    }

    ui::MainDialogState show() { return ui::showMainDialog(actions); }
    ui::MainDialogState pressUpload() {
        host.user = [](OpenDialog& dialog) { dialog.press("uploadButton"); };
        return show();
    }
    void expectRefusal(const std::string& message) {
        host.boxes.clear();
        EXPECT_FALSE(pressUpload().selectedWorkspaceId);
        EXPECT_THAT(host.boxes, ElementsAre("Pivra, error: " + message));
    }

    test_support::PluginFolder folder;
    ScriptedHost host;
    ui::MainDialogActions actions;
    std::shared_ptr<pivra::ModelMetadata> metadata = std::make_shared<pivra::ModelMetadata>();
    std::vector<cpp_piv::CppPivWorkspace> workspaces;
    std::vector<std::int64_t> lookups;
    std::string lookupFailure;
    bool isDrawing = false;
    bool fixLegacyId = true;
    bool signedIn = true;
    int signOuts = 0;
};

TEST_F(MainDialog, ShowsModelUserAndWorkspaces) {
    metadata->isAssembly = true;
    metadata->files.resize(2);
    host.user = [](OpenDialog& dialog) {
        EXPECT_EQ(dialog.name(), "pivraGui.dlx");
        EXPECT_EQ(dialog.label("fileName"), "     bolt.prt");
        EXPECT_EQ(dialog.tooltip("fileName"), "");
        EXPECT_EQ(dialog.label("fileSize"), "     Size: 1.50 MB (2 files)");
        EXPECT_EQ(dialog.bitmap("fileSize"), "pivra_file_upload_asm_icon.bmp");
        EXPECT_EQ(dialog.label("lastModified"), "     Last modified: May 04, 2025 - 09:07 PM");
        EXPECT_EQ(dialog.label("userGreeting"), "Welcome back, Zoë Ngô!");
        EXPECT_EQ(dialog.label("emailLabel"), "zoe@pivra.example");
        EXPECT_EQ(dialog.label("versionLabel"), std::string("Version ") + service::version);
        EXPECT_THAT(dialog.members("workspaceList"), ElementsAre("Main", "(unnamed workspace)", "日本"));
    };
    const auto state = show();
    EXPECT_EQ(state.metadata, metadata);
    EXPECT_EQ(state.workspaces->size(), 3U);
    EXPECT_FALSE(state.selectedWorkspaceId);
    EXPECT_THAT(host.boxes, IsEmpty());
    EXPECT_THAT(devkit::Gate::instance().violations(), IsEmpty());
    EXPECT_EQ(devkit::liveObjects().dialogs, 0);
    EXPECT_EQ(devkit::liveObjects().propertyLists, 0);
}

TEST_F(MainDialog, ShowsTheWarningsThatApply) {
    host.user = [](OpenDialog& dialog) {
        for (const char* group : {"idWarningGroup", "drwWarningGroup", "unsavedWarningGroup", "unsupportedWarningGroup",
                                  "targetWarningGroup"}) {
            EXPECT_FALSE(dialog.visible(group)) << group;
        }
    };
    show();

    isDrawing = true;
    metadata->hasLegacyId = metadata->hasUnsavedChanges = metadata->hasUnsupportedFileTypes = true;
    metadata->traceabilityError = "not saved";
    host.user = [](OpenDialog& dialog) {
        for (const char* group :
             {"idWarningGroup", "drwWarningGroup", "unsavedWarningGroup", "unsupportedWarningGroup"}) {
            EXPECT_TRUE(dialog.visible(group)) << group;
        }
        EXPECT_EQ(dialog.label("idWarning"), "Legacy file(s) detected. Unable to upload.");
    };
    EXPECT_TRUE(show().isDrawing);
}

TEST_F(MainDialog, LooksUpTheLatestRevisionOfTheChosenWorkspace) {
    host.user = [this](OpenDialog& dialog) {
        EXPECT_FALSE(dialog.visible("targetWarningGroup"));
        dialog.choose("workspaceList", 2);
        EXPECT_TRUE(dialog.visible("targetWarningGroup"));
        EXPECT_EQ(dialog.label("targetWarning"), ui::matchesLatestWarning);
        dialog.choose("workspaceList", 1);
        EXPECT_FALSE(dialog.visible("targetWarningGroup"));
        EXPECT_THAT(lookups, ElementsAre(11, 13, 12));
    };
    EXPECT_TRUE(show().revisionLookup);

    lookups.clear();
    metadata->sourceFileId.clear();
    host.user = [](OpenDialog& dialog) { dialog.choose("workspaceList", 2); };
    EXPECT_FALSE(show().revisionLookup);
    EXPECT_THAT(lookups, IsEmpty());
}

TEST_F(MainDialog, LogsAFailedLookup) {
    folder.startLogging();
    lookupFailure = "Revision lookup failed.";
    show();
    EXPECT_THAT(host.boxes, IsEmpty());
    EXPECT_THAT(
        folder.logLines(),
        testing::Contains("[WARNING] [Pivra] The latest revision could not be looked up: Revision lookup failed."));
}

TEST_F(MainDialog, UploadsIntoTheWorkspaceThatIsChosenEvenIfItsNameIsANumber) {
    setWorkspace(0, 11, "2");
    setWorkspace(1, 12, "0");
    setWorkspace(2, 13, "0");
    for (const int chosen : {0, 1, 2}) {
        host.user = [chosen](OpenDialog& dialog) {
            dialog.choose("workspaceList", chosen);
            dialog.press("uploadButton");
        };
        EXPECT_EQ(show().selectedWorkspaceId, 11 + chosen);
    }
    EXPECT_THAT(host.boxes, IsEmpty());
}

TEST_F(MainDialog, RefusesAnUploadForTheFirstReasonThatApplies) {
    workspaces.clear();
    host.user = [](OpenDialog&) {};
    show();
    EXPECT_THAT(host.boxes,
                ElementsAre("Pivra, information: No Pivra workspaces were returned for the authenticated user."));
    actions.loadWorkspaces = [] { return pivra::WorkspaceLoadResult{true, {}, ""}; };

    const auto refusalOf = [this] {
        host.boxes.clear();
        EXPECT_FALSE(pressUpload().selectedWorkspaceId);
        return host.boxes.back();
    };
    EXPECT_EQ(refusalOf(), std::string("Pivra, error: ") + ui::noWorkspaceSelected);
    metadata->hasLegacyId = true;
    EXPECT_EQ(refusalOf(), std::string("Pivra, error: ") + ui::noWorkspaceSelected);
    fixLegacyId = false;
    EXPECT_EQ(refusalOf(), std::string("Pivra, error: ") + ui::legacyUploadDisabled);
    metadata->uploadBlockedReason = "Save the NX file before uploading to Pivra.";
    EXPECT_EQ(refusalOf(), "Pivra, error: Save the NX file before uploading to Pivra.");
}

TEST_F(MainDialog, ReportsWorkspacesThatCannotBeLoaded) {
    actions.loadWorkspaces = [] { return pivra::WorkspaceLoadResult{false, {}, "No network."}; };
    const auto state = show();
    EXPECT_THAT(host.boxes, ElementsAre("Pivra, error: No network."));
    EXPECT_TRUE(state.workspaces->empty());
    EXPECT_THAT(lookups, IsEmpty());
}

TEST_F(MainDialog, SurvivesAPartThatCannotBeRead) {
    actions.readMetadata = []() -> std::shared_ptr<pivra::ModelMetadata> { throw std::runtime_error("gone"); };
    host.user = [](OpenDialog& dialog) {
        EXPECT_EQ(dialog.label("fileName"), "     Unknown");
        EXPECT_EQ(dialog.members("workspaceList").size(), 3U);
        dialog.press("uploadButton");
    };
    EXPECT_FALSE(show().selectedWorkspaceId);
    EXPECT_THAT(host.boxes, ElementsAre("Pivra, error: gone", "Pivra, error: gone"));
}

TEST_F(MainDialog, SignsOut) {
    host.user = [](OpenDialog& dialog) {
        dialog.press("uploadButton");
        dialog.press("signOutButton");
    };
    EXPECT_FALSE(show().selectedWorkspaceId) << "an upload accepted before is withdrawn";
    EXPECT_EQ(signOuts, 1);
    EXPECT_THAT(host.boxes, IsEmpty());

    actions.signOut = [] { throw std::runtime_error("refused"); };
    show();
    EXPECT_THAT(host.boxes, ElementsAre("Pivra, error: Failed to sign out of Pivra."));
}

TEST_F(MainDialog, ReportsADialogThatCannotBeCreatedOrShown) {
    for (const char* call : {"NXOpen::UI::CreateDialog", "NXOpen::BlockStyler::BlockDialog::Show"}) {
        devkit::Gate::instance().reset();
        devkit::Gate::instance().addFault({call, 0, 1, "No licence."});
        host.boxes.clear();
        const auto state = show();
        EXPECT_THAT(host.boxes, ElementsAre("Block Styler, error: No licence.")) << call;
        EXPECT_TRUE(state.metadata && state.workspaces && !state.selectedWorkspaceId);
    }
    devkit::Gate::instance().addFault({"NXOpen::UI::CreateDialog", 0, 1, "", true});
    host.boxes.clear();
    show();
    EXPECT_THAT(host.boxes, ElementsAre("Block Styler, error: NX could not create the dialog pivraGui.dlx."));
}

TEST_F(MainDialog, LetsNoFailureOfTheHostOut) {
    folder.startLogging();
    host.user = [](OpenDialog& dialog) {
        dialog.choose("workspaceList", 1);
        dialog.press("uploadButton");
        dialog.press("signOutButton");
    };
    show();
    for (const auto& [call, count] : std::map(devkit::Gate::instance().counts())) {
        for (const bool null : {false, true}) {
            devkit::Gate::instance().reset();
            devkit::Gate::instance().addFault({call, 0, 1, "Fault.", null});
            const auto told = host.boxes.size() + folder.logLines().size();
            show();
            EXPECT_TRUE(null || host.boxes.size() + folder.logLines().size() > told) << call;
            EXPECT_THAT(devkit::Gate::instance().violations(), IsEmpty()) << call;
            EXPECT_THAT(devkit::Session::instance().helpContexts, IsEmpty()) << call;
            EXPECT_EQ(devkit::liveObjects().dialogs, 0) << call;
            EXPECT_EQ(devkit::liveObjects().propertyLists, 0) << call;
        }
    }
}

}  // namespace
