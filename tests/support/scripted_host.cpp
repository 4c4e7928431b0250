#include "scripted_host.h"

#include <devkit/call_interceptor.h>
#include <devkit/session.h>

#include <stdexcept>

namespace test_support {

devkit::BlockData& OpenDialog::block(const std::string& id) const {
    auto* found = data_.find(id);
    if (found == nullptr) throw std::runtime_error(data_.name + " has no block \"" + id + "\"");
    return *found;
}

ScriptedHost::ScriptedHost() {
    devkit::CallInterceptor::instance().reset();
    devkit::Session::instance().reset();
    devkit::Session::instance().applicationFolders = {PIVRA_APPLICATION_FOLDER};
    devkit::presenter() = this;
}

ScriptedHost::~ScriptedHost() {
    devkit::presenter() = nullptr;
}

void ScriptedHost::show(devkit::DialogData& dialog) {
    dialogs.push_back(dialog.name);
    dialog.onInitialize();
    dialog.onShown();
    OpenDialog open(dialog);
    user(open);
}

int ScriptedHost::messageBox(const std::string& title, devkit::BoxKind kind, const std::string& message) {
    const char* kinds[] = {"error", "warning", "information", "question"};
    boxes.push_back(title + ", " + kinds[static_cast<int>(kind)] + ": " + message);
    whileBoxIsOpen();
    return 1;
}

}  // namespace test_support
