#include "scripted_host.h"

#include <devkit/gate.h>
#include <devkit/session.h>

#include <stdexcept>

namespace test_support {

devkit::BlockData& OpenDialog::block(const std::string& id) const {
    auto* found = data_.find(id);
    if (found == nullptr) throw std::runtime_error(data_.name + " has no block \"" + id + "\"");
    return *found;
}

std::string OpenDialog::text(const std::string& id, const std::string& property) const {
    return devkit::textProperty(block(id), property);
}

bool OpenDialog::visible(const std::string& id) const {
    return devkit::flagProperty(block(id), "Show", true);
}

void OpenDialog::choose(const std::string& enumeration, int number) {
    block(enumeration).properties["Value"] = number;
    press(enumeration);
}

ScriptedHost::ScriptedHost() {
    devkit::Gate::instance().reset();
    devkit::Session::instance().reset();
    devkit::Session::instance().applicationFolders = {PIVRA_APPLICATION_FOLDER};
    devkit::setPresenter(this);
}

ScriptedHost::~ScriptedHost() {
    devkit::setPresenter(nullptr);
}

void ScriptedHost::show(devkit::DialogData& dialog) {
    dialogs.push_back(dialog.name);
    dialog.onInitialize();
    dialog.onShown();
    OpenDialog open(dialog);
    user(open);
    dialog.onClose();
}

int ScriptedHost::messageBox(const std::string& title, devkit::BoxKind kind, const std::string& message) {
    const char* kinds[] = {"error", "warning", "information", "question"};
    boxes.push_back(title + ", " + kinds[static_cast<int>(kind)] + ": " + message);
    whileBoxIsOpen();
    return 1;
}

}  // namespace test_support
