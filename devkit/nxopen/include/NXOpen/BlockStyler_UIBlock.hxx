// One block of a dialog. It lives as long as the dialog.
#pragma once

#include <NXOpen/NXString.hxx>
#include <NXOpen/TaggedObject.hxx>

namespace devkit {
struct BlockData;
class DialogState;
}  // namespace devkit

namespace NXOpen::BlockStyler {

class PropertyList;

/// Failures throw NXException.
class NXOPEN_EXPORT UIBlock : public TaggedObject {
 public:
    UIBlock(devkit::DialogState& dialog, devkit::BlockData& data) : dialog_(dialog), data_(data) {}

    /// The caller deletes the list.
    PropertyList* GetProperties();

    NXString Name();
    NXString Type();
    NXString Label();
    void SetLabel(const NXString& label);
    void SetLabel(const char* label);
    bool Enable();
    void SetEnable(bool enable);
    bool Show();
    void SetShow(bool show);

    /// The model behind the block; of the stand-in alone.
    devkit::DialogState& dialog() { return dialog_; }
    devkit::BlockData& data() { return data_; }

 private:
    devkit::DialogState& dialog_;
    devkit::BlockData& data_;
};

}  // namespace NXOpen::BlockStyler
