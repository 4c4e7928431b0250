// The host's user interface.
#pragma once

#include <NXOpen/NXString.hxx>
#include <NXOpen/TaggedObject.hxx>

namespace NXOpen {

class NXMessageBox;
namespace BlockStyler {
class BlockDialog;
}

class NXOPEN_EXPORT UI : public TaggedObject {
 public:
    static UI* GetUI();

    NXOpen::NXMessageBox* NXMessageBox();

    /// The dialog of a layout file: a full path, or a name that is looked for in the application folders and the
    /// current folder. The caller deletes it. Throws NXException when the file is missing or broken.
    BlockStyler::BlockDialog* CreateDialog(const NXString& dialogName);
};

}  // namespace NXOpen
