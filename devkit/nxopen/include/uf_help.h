// The stack of help contexts. Texts are not changed by the calls, although they are not const.
#pragma once

#include <uf_defs.h>

NXOPEN_C int UF_HELP_load_map_file(char* filename);
/* Empties the stack, then pushes. */
NXOPEN_C int UF_HELP_push_primary_context(char* app_context);
/* Pops the top. A failing status pops it all the same, but for an empty stack. */
NXOPEN_C int UF_HELP_pop_context(void);
