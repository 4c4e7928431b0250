// The stand-in host with a scripted user: dialogs come from the shipped layouts and are shown nowhere, the user's
// actions are a function, message boxes are kept.
#pragma once

#include <devkit/dialog.h>
#include <devkit/presenter.h>

#include <functional>
#include <string>
#include <vector>

namespace test_support {

/// One open dialog as the user sees and handles it. A block that the layout lacks fails the test.
class OpenDialog {
 public:
    explicit OpenDialog(devkit::DialogData& data) : data_(data) {}

    const std::string& name() const { return data_.name; }
    void press(const std::string& button) { data_.onUpdate(block(button)); }
    /// The host tells the dialog again that it is shown.
    void showAgain() { data_.onShown(); }

    std::string label(const std::string& id) const { return devkit::textProperty(block(id), "Label"); }
    bool visible(const std::string& id) const { return devkit::propertyOr(block(id), "Show", true); }

 private:
    devkit::BlockData& block(const std::string& id) const;

    devkit::DialogData& data_;
};

/// Makes a fresh host whose layouts are the shipped ones, and serves as its presenter until destruction.
class ScriptedHost : public devkit::Presenter {
 public:
    ScriptedHost();
    ~ScriptedHost() override;

    /// What the user does in an open dialog; it closes when this returns.
    std::function<void(OpenDialog&)> user = [](OpenDialog&) {};
    /// What happens while a message box is open.
    std::function<void()> whileBoxIsOpen = [] {};

    std::vector<std::string> dialogs;  ///< layout names, in order
    std::vector<std::string> boxes;    ///< "title, kind: message"

    void show(devkit::DialogData& dialog) override;
    void changed(devkit::DialogData&, devkit::BlockData&) override {}
    int messageBox(const std::string& title, devkit::BoxKind kind, const std::string& message) override;
};

}  // namespace test_support
