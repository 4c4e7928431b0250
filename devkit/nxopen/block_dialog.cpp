#include <devkit/live_objects.h>
#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>

#include "calls.h"
#include "dialog_state.h"

namespace NXOpen::BlockStyler {

BlockDialog::BlockDialog(std::unique_ptr<devkit::DialogState> state) : state_(std::move(state)) {
    ++devkit::liveObjects().dialogs;
}

BlockDialog::~BlockDialog() {
    --devkit::liveObjects().dialogs;
}

void BlockDialog::AddCloseHandler(const Close& closeCb) {
    devkit::enter("NXOpen::BlockStyler::BlockDialog::AddCloseHandler");
    state_->closeHandlers.emplace_back(static_cast<Close*>(closeCb.Clone()));
}

void BlockDialog::AddInitializeHandler(const Initialize& initializeCb) {
    devkit::enter("NXOpen::BlockStyler::BlockDialog::AddInitializeHandler");
    state_->initializeHandlers.emplace_back(static_cast<Initialize*>(initializeCb.Clone()));
}

void BlockDialog::AddDialogShownHandler(const DialogShown& dialogShownCb) {
    devkit::enter("NXOpen::BlockStyler::BlockDialog::AddDialogShownHandler");
    state_->shownHandlers.emplace_back(static_cast<DialogShown*>(dialogShownCb.Clone()));
}

void BlockDialog::AddUpdateHandler(const Update& updateCb) {
    devkit::enter("NXOpen::BlockStyler::BlockDialog::AddUpdateHandler");
    state_->updateHandlers.emplace_back(static_cast<Update*>(updateCb.Clone()));
}

int BlockDialog::Show() {
    devkit::enter("NXOpen::BlockStyler::BlockDialog::Show");
    state_->show();
    return 0;
}

CompositeBlock* BlockDialog::TopBlock() {
    if (!devkit::enterForPointer("NXOpen::BlockStyler::BlockDialog::TopBlock")) return nullptr;
    return static_cast<CompositeBlock*>(state_->top());
}

PropertyList* BlockDialog::GetBlockProperties(const NXString& blockId) {
    if (!devkit::enterForPointer("NXOpen::BlockStyler::BlockDialog::GetBlockProperties")) return nullptr;
    UIBlock* block = state_->find(blockId.GetUTF8Text());
    if (block == nullptr) devkit::fail(std::string("The dialog has no block \"") + blockId.GetUTF8Text() + "\".");
    return new PropertyList(*state_, block->data());
}

PropertyList* BlockDialog::GetBlockProperties(const char* blockId) {
    return GetBlockProperties(NXString(blockId));
}

}  // namespace NXOpen::BlockStyler
