// The encoded names of parts that Teamcenter manages.
#pragma once

#include <devkit/session.h>

#include <optional>
#include <string>

namespace devkit {

/// "%UGMGR=V3.2 PN=number PRN=revision AT=type AN=name", without the empty pieces.
std::string encodeManagedName(const ManagedItem& item);

/// "@DB/number/revision[/type/name]".
std::string commandLineName(const ManagedItem& item);
bool isCommandLineName(const std::string& name);

/// The pieces of such a name, or of "@DB/number/revision[/type/name]"; absent for any other text.
std::optional<ManagedItem> decodeManagedName(const std::string& name);

}  // namespace devkit
