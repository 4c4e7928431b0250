// What the host finds in the plug-in's file. No exception leaves these functions.
#include "entry/launch.h"
#include "ui/callback_guard.h"

#include <uf.h>
#include <uf_exit.h>

// The resource that a signed library carries. The host delivers it as a source to be included.
#include <NXSigningResource.cpp>  // NOLINT(bugprone-suspicious-include)

extern "C" {

/// The user runs the plug-in. The arguments are not used.
DllExport void ufusr(char* /*param*/, int* /*retcod*/, int /*param_len*/) {
    ui::guardRun(entry::run);
}

/// The session of a signed-in user lives in the library, so it stays until the host ends.
DllExport int ufusr_ask_unload() {
    return UF_UNLOAD_UG_TERMINATE;
}

/// The host unloads the library.
DllExport void ufusr_cleanup() {
    ui::guardRun(entry::cleanUp);
}
}
