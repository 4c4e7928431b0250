// The functions that the host calls by name. No exception leaves them.
#include "entry/launch.h"
#include "ui/message_box.h"

#include <uf.h>
#include <uf_exit.h>

// The resource that a signed library must contain. NX ships it as a source file to include.
#include <NXSigningResource.cpp>  // NOLINT(bugprone-suspicious-include)

extern "C" {

/// The user runs the plug-in. The arguments are not used.
DllExport void ufusr(char* /*param*/, int* /*retcod*/, int /*param_len*/) {
    ui::guardRun(entry::run);
}

/// The library holds the sign-in session, so it stays loaded until the host ends.
DllExport int ufusr_ask_unload() {
    return UF_UNLOAD_UG_TERMINATE;
}

/// The host unloads the library.
DllExport void ufusr_cleanup() {
    ui::guardRun(entry::cleanUp);
}
}
