// The properties of one block, by name. The caller deletes the list while the dialog lives.
#pragma once

#include <NXOpen/NXString.hxx>
#include <NXOpen/TransientObject.hxx>

namespace NXOpen::BlockStyler {

/// A name that the block lacks, or the method of another type, throws NXException. An enumeration's "Value" is the
/// index of the chosen member, and as a string that member's text.
class NXOPEN_EXPORT PropertyList : public TransientObject {
 public:
    PropertyList(devkit::DialogState& dialog, devkit::BlockData& block) : dialog_(dialog), block_(block) {}

    NXString GetString(const NXString& name);
    void SetString(const NXString& name, const NXString& value);
    bool GetLogical(const NXString& name);
    void SetLogical(const NXString& name, bool value);
    int GetEnum(const NXString& name);
    void SetEnum(const NXString& name, int value);
    NXString GetEnumAsString(const NXString& name);

 private:
    devkit::DialogState& dialog_;
    devkit::BlockData& block_;
};

}  // namespace NXOpen::BlockStyler
