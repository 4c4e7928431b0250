// Types and limits shared by the host's C interface.
//
// Functions return 0 or a status. Narrow text is in the process's file-system code page. All but UF_initialize,
// UF_terminate and the UF_free functions need an open bracket. Host's thread only.
#pragma once

#include <nxopen_export.h>

#if defined(_WIN32)
#define DllExport __declspec(dllexport)
#else
#define DllExport __attribute__((visibility("default")))
#endif

#define NXOPEN_C extern "C" NXOPEN_EXPORT

typedef unsigned int tag_t;
typedef bool logical;

#define NULL_TAG ((tag_t)0)

/* Size of a buffer that holds the longest file name. */
#define MAX_FSPEC_BUFSIZE (4 * 1024 + 1)
