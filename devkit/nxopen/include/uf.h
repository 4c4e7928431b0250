// The bracket of the C interface, the memory it hands out, and what belongs to no part.
#pragma once

#include <uf_defs.h>

/* Opens the bracket; brackets nest. */
NXOPEN_C int UF_initialize(void);
/* Closes it. A failing status closes it all the same. */
NXOPEN_C int UF_terminate(void);

#define UF_APP_DRAFTING 1

/* The application that is active. */
NXOPEN_C int UF_ask_application_module(int* module_id);

/* Frees an array that a query returned; null is fine. */
NXOPEN_C void UF_free(void* memory);
/* Frees the strings of an array, some of which may be null, and the array. */
NXOPEN_C void UF_free_string_array(int n_strings, char** string_array);

/* Entry point of a user-function library, which the library defines. */
extern "C" DllExport void ufusr(char* param, int* retcod, int param_len);
