// How a user-function library leaves the host.
#pragma once

#include <uf_defs.h>

#define UF_UNLOAD_UG_TERMINATE 3

/* Defined by the library: when it may be unloaded, and what runs just before it is. */
extern "C" DllExport int ufusr_ask_unload(void);
extern "C" DllExport void ufusr_cleanup(void);
