// Bitmap files: read for a dialog, written from a window.
#pragma once

#include <windows.h>

#include <filesystem>

namespace nxhost {

/// Loads a bitmap file, its backdrop RGB 192,192,192 replaced by the colour of dialogs. Null when it cannot be read.
HBITMAP loadBitmap(const std::filesystem::path& file);

/// Width and height of a bitmap; zero for null.
SIZE sizeOf(HBITMAP bitmap);

/// Saves a window with its frame as a 24-bit bitmap file. Throws std::runtime_error.
void saveWindow(HWND window, const std::filesystem::path& file);

}  // namespace nxhost
