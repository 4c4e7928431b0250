#include <devkit/presenter.h>
#include <devkit/session.h>
#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/UI.hxx>

#include <stdexcept>

#include "calls.h"
#include "dialog_state.h"
#include "host_text.h"

namespace devkit {

Presenter*& presenter() {
    static Presenter* current = nullptr;
    return current;
}

}  // namespace devkit

namespace NXOpen {

namespace {

std::filesystem::path findLayout(const std::filesystem::path& name) {
    if (name.is_absolute()) return name;
    std::error_code ignored;
    for (const auto& folder : devkit::Session::instance().applicationFolders)
        if (std::filesystem::exists(folder / name, ignored)) return folder / name;
    return name;
}

}  // namespace

UI* UI::GetUI() {
    static UI ui;
    return devkit::enterForPointer("NXOpen::UI::GetUI") ? &ui : nullptr;
}

NXOpen::NXMessageBox* UI::NXMessageBox() {
    static NXOpen::NXMessageBox box;
    return devkit::enterForPointer("NXOpen::UI::NXMessageBox") ? &box : nullptr;
}

BlockStyler::BlockDialog* UI::CreateDialog(const NXString& dialogName) {
    if (!devkit::enterForPointer("NXOpen::UI::CreateDialog")) return nullptr;
    const devkit::NeighbourTime time;
    try {
        auto layout = devkit::readLayout(findLayout(devkit::pathOf(dialogName.GetUTF8Text())));
        return new BlockStyler::BlockDialog(std::make_unique<devkit::DialogState>(std::move(layout)));
    } catch (const std::runtime_error& error) {
        devkit::fail(std::string("The dialog could not be created: ") + error.what());
    }
}

int NXMessageBox::Show(const NXString& title, DialogType msgboxType, const NXString& message) {
    devkit::enter("NXOpen::NXMessageBox::Show");
    const devkit::NeighbourTime time;
    return devkit::presenter()->messageBox(title.GetUTF8Text(), static_cast<devkit::BoxKind>(msgboxType),
                                           message.GetUTF8Text());
}

}  // namespace NXOpen
