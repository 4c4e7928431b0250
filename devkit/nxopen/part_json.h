// The description of a part in a session file.
#pragma once

#include <devkit/session.h>

#include <filesystem>

#include "json_members.h"

namespace devkit {

/// Applies the members of a part's description, all but its name, and creates or removes its file under `folder`.
/// Throws std::runtime_error that names the offending member.
void applyPart(JsonMembers& members, PartData& part, const std::filesystem::path& folder);

/// Throws the same for a component that is loaded and places no part of the session.
void checkComponents(const PartData& part, const std::string& where);

}  // namespace devkit
