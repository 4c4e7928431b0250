// A dialog made of blocks, laid out by a file.
#pragma once

#include <NXOpen/Callback.hxx>
#include <NXOpen/NXString.hxx>
#include <NXOpen/TransientObject.hxx>

#include <memory>

namespace NXOpen::BlockStyler {

class CompositeBlock;
class PropertyList;
class UIBlock;

/// The caller deletes it. Handlers, one of each kind, are called on the host's thread while Show() runs and must not
/// throw.
class NXOPEN_EXPORT BlockDialog : public TransientObject {
 public:
    using Initialize = std::function<void()>;
    using DialogShown = std::function<void()>;
    using Update = std::function<int(UIBlock*)>;

    explicit BlockDialog(std::unique_ptr<devkit::DialogState> state);
    ~BlockDialog() override;

    void AddInitializeHandler(const Initialize& initializeCb);
    void AddDialogShownHandler(const DialogShown& dialogShownCb);
    void AddUpdateHandler(const Update& updateCb);

    /// Shows the dialog modally; returns when it has closed.
    int Show();

    CompositeBlock* TopBlock();
    /// The properties of a block; the caller deletes the list. Throws NXException for an unknown block.
    PropertyList* GetBlockProperties(const NXString& blockId);

 private:
    std::unique_ptr<devkit::DialogState> state_;
};

}  // namespace NXOpen::BlockStyler
