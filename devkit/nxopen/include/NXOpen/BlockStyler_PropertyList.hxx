// The properties of one block, by name. The caller deletes the list while the dialog lives.
#pragma once

#include <NXOpen/NXString.hxx>
#include <NXOpen/TransientObject.hxx>

#include <string>
#include <vector>

namespace devkit {
struct BlockData;
class DialogState;
}  // namespace devkit

namespace NXOpen::BlockStyler {

/// A name that the block lacks, or the method of another type, throws NXException. An enumeration's "Value" is the
/// index of the chosen member, and as a string that member's text.
class NXOPEN_EXPORT PropertyList : public TransientObject {
 public:
    PropertyList(devkit::DialogState& dialog, devkit::BlockData& block);
    ~PropertyList() override;

    NXString GetString(const NXString& name);
    NXString GetString(const char* name);
    void SetString(const NXString& name, const NXString& value);
    void SetString(const char* name, const char* value);

    bool GetLogical(const NXString& name);
    bool GetLogical(const char* name);
    void SetLogical(const NXString& name, bool value);
    void SetLogical(const char* name, bool value);

    int GetInteger(const NXString& name);
    int GetInteger(const char* name);
    void SetInteger(const NXString& name, int value);
    void SetInteger(const char* name, int value);

    int GetEnum(const NXString& name);
    int GetEnum(const char* name);
    void SetEnum(const NXString& name, int value);
    void SetEnum(const char* name, int value);
    NXString GetEnumAsString(const NXString& name);
    NXString GetEnumAsString(const char* name);
    void SetEnumAsString(const NXString& name, const NXString& value);
    void SetEnumAsString(const char* name, const char* value);

    std::vector<NXString> GetEnumMembers(const NXString& name);
    std::vector<NXString> GetEnumMembers(const char* name);
    /// The first member becomes the chosen one.
    void SetEnumMembers(const NXString& name, const std::vector<NXString>& members);
    void SetEnumMembers(const char* name, const std::vector<NXString>& members);

 private:
    devkit::DialogState& dialog_;
    devkit::BlockData& block_;
};

}  // namespace NXOpen::BlockStyler
