#include "bitmap_win.h"

#include "text.h"

#include <windows.h>

#include <propidl.h>

#include <gdiplus.h>

#include <stdexcept>

namespace nxhost {

namespace {

constexpr CLSID bitmapFormat{0x557CF400, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

class GdiPlus {
 public:
    GdiPlus() {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&token_, &input, nullptr);
    }
    ~GdiPlus() { Gdiplus::GdiplusShutdown(token_); }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;

 private:
    ULONG_PTR token_ = 0;
};

}  // namespace

Extent extentOf(HBITMAP bitmap) {
    BITMAP facts{};
    GetObjectW(bitmap, sizeof facts, &facts);
    return {facts.bmWidth, facts.bmHeight};
}

HBITMAP loadBitmap(const std::filesystem::path& file) {
    const GdiPlus library;
    Gdiplus::Bitmap picture(file.c_str());
    const Gdiplus::Rect whole(0, 0, static_cast<int>(picture.GetWidth()), static_cast<int>(picture.GetHeight()));
    Gdiplus::Bitmap shown(whole.Width, whole.Height, PixelFormat24bppRGB);
    Gdiplus::Color backdrop;
    backdrop.SetFromCOLORREF(GetSysColor(COLOR_3DFACE));
    Gdiplus::ImageAttributes transparent;
    transparent.SetColorKey(Gdiplus::Color(192, 192, 192), Gdiplus::Color(192, 192, 192));
    Gdiplus::Graphics canvas(&shown);
    canvas.Clear(backdrop);
    canvas.DrawImage(&picture, whole, 0, 0, whole.Width, whole.Height, Gdiplus::UnitPixel, &transparent);
    HBITMAP bitmap = nullptr;
    return shown.GetHBITMAP(backdrop, &bitmap) == Gdiplus::Ok ? bitmap : nullptr;
}

void saveWindow(HWND window, const std::filesystem::path& file) {
    RECT frame{};
    GetWindowRect(window, &frame);
    const Extent size{frame.right - frame.left, frame.bottom - frame.top};
    const GdiPlus library;
    Gdiplus::Bitmap picture(size.width, size.height, PixelFormat24bppRGB);
    Gdiplus::Graphics canvas(&picture);
    const auto target = canvas.GetHDC();
    const auto source = GetWindowDC(window);
    BitBlt(target, 0, 0, size.width, size.height, source, 0, 0, SRCCOPY);
    ReleaseDC(window, source);
    canvas.ReleaseHDC(target);
    std::filesystem::create_directories(file.parent_path());
    if (picture.Save(file.c_str(), &bitmapFormat, nullptr) != Gdiplus::Ok)
        throw std::runtime_error("The picture " + utf8(file) + " cannot be written.");
}

}  // namespace nxhost
