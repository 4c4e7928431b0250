// Marks what the stand-in host's library shows to the programs that link it.
#pragma once

#if defined(_WIN32)
#if defined(NXOPEN_BUILD)
#define NXOPEN_EXPORT __declspec(dllexport)
#else
#define NXOPEN_EXPORT __declspec(dllimport)
#endif
#else
#define NXOPEN_EXPORT __attribute__((visibility("default")))
#endif
