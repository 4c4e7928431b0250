// Events and parts as a person reads them.
#pragma once

#include "scrub.h"

#include <devkit/session.h>

#include <string>

namespace nxhost {

/// The event in one line: "Part saved: part=plate, saved=true".
std::string lineOf(const Event& event);

/// What the plug-in takes the part for: "native, assembly, legacy".
std::string kindOf(const devkit::PartData& part);

/// Its item number and revision in Teamcenter, or the name of its file.
std::string fileOf(const devkit::PartData& part);

}  // namespace nxhost
