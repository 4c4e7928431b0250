// Bitmap files: read for a dialog, written from a window.
#pragma once

#include <filesystem>

struct HBITMAP__;
struct HWND__;

namespace nxhost {

/// Loads a bitmap file, its backdrop RGB 192,192,192 replaced by the colour of dialogs. Null when it cannot be read.
HBITMAP__* loadBitmap(const std::filesystem::path& file);

/// Width and height in pixels.
struct Extent {
    int width = 0;
    int height = 0;
};

/// Zero for null.
Extent extentOf(HBITMAP__* bitmap);

/// Saves a window with its frame as a 24-bit bitmap file. Throws std::runtime_error.
void saveWindow(HWND__* window, const std::filesystem::path& file);

}  // namespace nxhost
