// What every header of the stand-in host has: the mark of what its library shows, and the model behind its classes.
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

namespace devkit {
struct BlockData;
struct ComponentData;
struct PartData;
class DialogState;
}  // namespace devkit
