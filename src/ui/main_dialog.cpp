#include "ui/main_dialog.h"

#include "logging/log.h"
#include "nx/text.h"
#include "platform/error_text.h"
#include "ui/block_dialog_window.h"
#include "ui/dialog_text.h"
#include "ui/message_box.h"

#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_Enumeration.hxx>

namespace ui {
namespace {

using NXOpen::BlockStyler::Button;
using NXOpen::BlockStyler::Enumeration;
using NXOpen::BlockStyler::UIBlock;

using Workspaces = std::vector<cpp_piv::CppPivWorkspace>;

std::vector<std::string> namesOf(const Workspaces& workspaces) {
    std::vector<std::string> names;
    for (const auto& workspace : workspaces) names.push_back(pivra::workspaceLabel(workspace.name));
    return names;
}

class MainDialogWindow final : public BlockDialogWindow {
 public:
    explicit MainDialogWindow(const MainDialogActions& actions) : BlockDialogWindow("pivraGui.dlx"), actions_(actions) {
        state_.metadata = std::make_shared<pivra::ModelMetadata>();
        state_.workspaces = std::make_shared<const Workspaces>();
    }

    const MainDialogState& state() const { return state_; }

 private:
    void initialize() override {
        workspaceList_ = find<Enumeration>("workspaceList");
        signOutButton_ = find<Button>("signOutButton");
        uploadButton_ = find<Button>("uploadButton");
    }

    void shown() override {
        readModel();
        showModel();
        showUser();
        showWarnings();
        fillWorkspaces();
        refreshTargetWarning();
    }

    void update(const UIBlock& changed) override {
        if (&changed == workspaceList_) refreshTargetWarning();
        if (&changed == signOutButton_) signOut();
        if (&changed == uploadButton_) acceptUpload();
    }

    // A part that cannot be read cannot be uploaded, but the rest of the dialog works.
    void readModel() {
        try {
            isDrawing_ = actions_.isDrawing();
            state_.metadata = actions_.readMetadata();
            blockingMessage_ = blockingMessage(*state_.metadata);
        } catch (...) {
            blockingMessage_ = platform::currentErrorText(unknownError);
            ShowErrorMessage(blockingMessage_);
        }
    }

    void showModel() {
        const auto name = fileNameLine(state_.metadata->fileName);
        setLabel("fileName", name.text);
        setTooltip("fileName", name.tooltip);
        setLabel("fileSize", sizeLine(*state_.metadata));
        setBitmap("fileSize", fileIcon(*state_.metadata));
        setLabel("lastModified", lastModifiedLine(*state_.metadata));
    }

    void showUser() {
        const auto name = actions_.userName();
        const auto email = actions_.userEmail();
        if (!name.empty()) setLabel("userGreeting", greeting(name));
        if (!email.empty()) setLabel("emailLabel", email);
        setLabel("versionLabel", versionText());
    }

    void showWarnings() {
        const bool willBeFixed = blockingMessage_.empty() && actions_.fixLegacyIdEnabled();
        for (const auto& warning : partWarnings(*state_.metadata, isDrawing_, willBeFixed)) {
            setLabel(warning.label, warning.text);
            setVisible(warning.group, warning.shown);
        }
    }

    void fillWorkspaces() {
        auto loaded = actions_.loadWorkspaces();
        state_.workspaces = std::make_shared<const Workspaces>(std::move(loaded.workspaces));
        if (!state_.workspaces->empty() && workspaceList_ != nullptr) setMembers(namesOf(*state_.workspaces));
        if (!loaded.succeeded) {
            ShowErrorMessage(loaded.message);
        } else if (state_.workspaces->empty()) {
            ShowInfoMessage(noWorkspaces);
        }
    }

    void setMembers(const std::vector<std::string>& names) {
        std::vector<NXOpen::NXString> members;
        members.reserve(names.size());
        for (const auto& name : names) members.push_back(nx::toHost(name));
        workspaceList_->SetEnumMembers(members);
    }

    const cpp_piv::CppPivWorkspace* selectedWorkspace() {
        if (state_.workspaces->empty()) return nullptr;
        const auto value = enumerationValue("workspaceList");
        if (!value) return nullptr;
        const auto index = selectedIndex(namesOf(*state_.workspaces), value->text, value->number);
        return index ? &(*state_.workspaces)[*index] : nullptr;
    }

    void refreshTargetWarning() {
        const auto* workspace = selectedWorkspace();
        setVisible("targetWarningGroup", workspace != nullptr && !state_.metadata->sourceFileId.empty() &&
                                             matchesLatestRevision(workspace->id));
    }

    bool matchesLatestRevision(std::int64_t workspaceId) {
        const auto lookup = actions_.lookupRevision(workspaceId, *state_.workspaces, *state_.metadata);
        const auto& failure = lookup.message;
        if (!failure.empty()) logging::LogWarning("The latest revision could not be looked up: " + failure);
        return lookup.matchesLatest;
    }

    void signOut() {
        const auto window = ownWindow();
        state_.selectedWorkspace.reset();
        try {
            actions_.signOut();
        } catch (...) {
            logging::LogError("Signing out failed: " + platform::currentErrorChain(unknownError));
            ShowErrorMessage(signOutFailed);
            if (actions_.isSignedIn()) return;
        }
        close(window);
    }

    void acceptUpload() {
        const auto window = ownWindow();
        state_.selectedWorkspace.reset();
        const auto refusal = uploadRefusal();
        if (!refusal.empty()) return ShowErrorMessage(refusal);
        const auto* workspace = selectedWorkspace();
        if (workspace == nullptr) return ShowErrorMessage(noWorkspaceSelected);
        state_.selectedWorkspace = *workspace;
        close(window);
    }

    std::string uploadRefusal() {
        if (!blockingMessage_.empty()) return blockingMessage_;
        if (state_.metadata->hasLegacyId && !actions_.fixLegacyIdEnabled()) return legacyUploadDisabled;
        return {};
    }

    const MainDialogActions& actions_;
    MainDialogState state_;
    bool isDrawing_ = false;
    std::string blockingMessage_;
    Enumeration* workspaceList_ = nullptr;
    Button* signOutButton_ = nullptr;
    Button* uploadButton_ = nullptr;
};

}  // namespace

MainDialogState showMainDialog(const MainDialogActions& actions) noexcept {
    MainDialogWindow window(actions);
    window.show();
    return window.state();
}

}  // namespace ui
