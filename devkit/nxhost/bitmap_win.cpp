#include "bitmap_win.h"

#include "text.h"

#include <windows.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace nxhost {

namespace {

BITMAPINFOHEADER header24(const Extent& size) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = size.width;
    header.biHeight = size.height;
    header.biPlanes = 1;
    header.biBitCount = 24;
    header.biCompression = BI_RGB;
    return header;
}

std::size_t strideOf(const Extent& size) {
    return (static_cast<std::size_t>(size.width) * 3 + 3) / 4 * 4;
}

// The device-independent pixels of a bitmap, bottom row first.
std::vector<std::uint8_t> pixelsOf(HDC device, HBITMAP bitmap, const Extent& size) {
    BITMAPINFO info{header24(size), {}};
    std::vector<std::uint8_t> pixels(strideOf(size) * static_cast<std::size_t>(size.height));
    GetDIBits(device, bitmap, 0, static_cast<UINT>(size.height), pixels.data(), &info, DIB_RGB_COLORS);
    return pixels;
}

void replaceBackdrop(std::vector<std::uint8_t>& pixels, const Extent& size, COLORREF colour) {
    for (int row = 0; row < size.height; ++row) {
        auto* pixel = pixels.data() + strideOf(size) * static_cast<std::size_t>(row);
        for (int column = 0; column < size.width; ++column, pixel += 3) {
            if (pixel[0] != 192 || pixel[1] != 192 || pixel[2] != 192) continue;
            pixel[0] = GetBValue(colour);
            pixel[1] = GetGValue(colour);
            pixel[2] = GetRValue(colour);
        }
    }
}

template <typename Record>
void append(std::string& bytes, const Record& record) {
    bytes.append(reinterpret_cast<const char*>(&record), sizeof record);
}

void writeBitmap(const std::vector<std::uint8_t>& pixels, const Extent& size, const std::filesystem::path& file) {
    BITMAPFILEHEADER start{};
    start.bfType = 0x4D42;  // "BM"
    start.bfOffBits = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
    start.bfSize = start.bfOffBits + static_cast<DWORD>(pixels.size());
    std::string bytes;
    append(bytes, start);
    append(bytes, header24(size));
    bytes.append(pixels.begin(), pixels.end());
    writeFile(file, bytes);
}

}  // namespace

Extent extentOf(HBITMAP bitmap) {
    BITMAP facts{};
    GetObjectW(bitmap, sizeof facts, &facts);
    return {facts.bmWidth, facts.bmHeight};
}

HBITMAP loadBitmap(const std::filesystem::path& file) {
    const auto bitmap = static_cast<HBITMAP>(
        LoadImageW(nullptr, file.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION));
    if (!bitmap) return nullptr;
    const auto screen = GetDC(nullptr);
    const auto size = extentOf(bitmap);
    auto pixels = pixelsOf(screen, bitmap, size);
    replaceBackdrop(pixels, size, GetSysColor(COLOR_3DFACE));
    BITMAPINFO info{header24(size), {}};
    SetDIBits(screen, bitmap, 0, static_cast<UINT>(size.height), pixels.data(), &info, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

void saveWindow(HWND window, const std::filesystem::path& file) {
    RECT frame{};
    GetWindowRect(window, &frame);
    const Extent size{frame.right - frame.left, frame.bottom - frame.top};
    const auto source = GetWindowDC(window);
    const auto memory = CreateCompatibleDC(source);
    const auto copy = CreateCompatibleBitmap(source, size.width, size.height);
    const auto before = SelectObject(memory, copy);
    BitBlt(memory, 0, 0, size.width, size.height, source, 0, 0, SRCCOPY);
    SelectObject(memory, before);
    const auto pixels = pixelsOf(source, copy, size);
    DeleteObject(copy);
    DeleteDC(memory);
    ReleaseDC(window, source);
    writeBitmap(pixels, size, file);
}

}  // namespace nxhost
