// A dialog made of blocks, laid out by a file.
#pragma once

#include <NXOpen/Callback.hxx>
#include <NXOpen/NXString.hxx>
#include <NXOpen/TransientObject.hxx>

#include <memory>

namespace devkit {
class DialogState;
}

namespace NXOpen::BlockStyler {

class CompositeBlock;
class PropertyList;
class UIBlock;

/// The caller deletes it. Handlers are called on the host's thread while Show() runs and must not throw.
class NXOPEN_EXPORT BlockDialog : public TransientObject {
 public:
    typedef Callback0<int> Close;
    typedef Callback0<void> Initialize;
    typedef Callback0<void> DialogShown;
    typedef Callback1<int, UIBlock*> Update;

    explicit BlockDialog(std::unique_ptr<devkit::DialogState> state);
    ~BlockDialog() override;

    void AddCloseHandler(const Close& closeCb);
    void AddInitializeHandler(const Initialize& initializeCb);
    void AddDialogShownHandler(const DialogShown& dialogShownCb);
    void AddUpdateHandler(const Update& updateCb);

    /// Shows the dialog modally; returns when it has closed.
    int Show();

    CompositeBlock* TopBlock();
    /// The properties of a block; the caller deletes the list. Throws NXException for an unknown block.
    PropertyList* GetBlockProperties(const NXString& blockId);
    PropertyList* GetBlockProperties(const char* blockId);

 private:
    std::unique_ptr<devkit::DialogState> state_;
};

}  // namespace NXOpen::BlockStyler
