// Small questions about a part of the host's session.
//
// Host's thread only. Each query brackets its calls of the C interface itself; when the interface cannot be used the
// answer is the harmless one (false, absent, "1"), and the log has the status. A host exception of the C++ interface
// passes through.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace NXOpen {
class BasePart;
}

namespace pivra {

/// Pieces of the name of a part under Teamcenter; any but the number may be empty.
struct ManagedPartName {
    std::string partNumber;
    std::string partRevision;
    std::string partFileType;
    std::string partFileName;
};

/// True when the drafting application is active: then the sheets are uploaded, not the model.
bool isDrawingContext();
/// The same; absent when the host could not answer.
std::optional<bool> askDrawingContext();

/// True when the part has changes that are not saved. When the interface cannot be used, one warning line that begins
/// with `check`.
bool isPartModified(NXOpen::BasePart* part, std::string_view check = "NX modified-state check");

/// True for a part-family instance, a part-family template, and a part with part-family instance data.
bool isPartFamilyMember(NXOpen::BasePart* part);

/// The decoded name of a part managed by Teamcenter; absent for every other part.
std::optional<ManagedPartName> decodeManagedPartName(NXOpen::BasePart* part);
/// The same in `name`; false when the host could not answer.
bool askManagedPartName(NXOpen::BasePart* part, std::optional<ManagedPartName>& name);

/// The pieces of the encoded name `encoded`, which is in the host's code page. Returns the status of the C interface,
/// whose bracket must be open; the pieces are empty when that is not 0.
int decodeEncodedName(const char* encoded, ManagedPartName& name);

/// The command-line form ("@DB/…") of the encoded name `encoded`, both in the host's code page; empty when the host
/// gives none. The bracket of the C interface must be open.
std::string commandLineNameOf(const char* encoded);

/// True when `path` (UTF-8) names an ordinary file that exists; false for a directory or a link.
bool hasUsableLocalSource(std::string_view path);

/// The revision id that Teamcenter configures for the part of that name; "1" for any other part and when none is given.
std::string configuredRevisionId(const std::optional<ManagedPartName>& name);

}  // namespace pivra
