// How a user-function library leaves the host.
#pragma once

#include <uf_defs.h>

#define UF_UNLOAD_IMMEDIATELY 1
#define UF_UNLOAD_SEL_DIALOG 2
#define UF_UNLOAD_UG_TERMINATE 3

/* Defined by the library: when it may be unloaded (one of the above), and what runs just before it is. */
extern "C" DllExport int ufusr_ask_unload(void);
extern "C" DllExport void ufusr_cleanup(void);
