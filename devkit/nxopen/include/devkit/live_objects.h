// How many of the things that a plug-in must end itself are alive.
#pragma once

#include <nxopen_export.h>

namespace devkit {

struct LiveObjects {
    int dialogs = 0;
    int propertyLists = 0;
    int saveStatuses = 0;
    int builders = 0;
};

/// Host's thread.
NXOPEN_EXPORT LiveObjects& liveObjects();

}  // namespace devkit
