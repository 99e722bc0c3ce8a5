#include "support/screen_win32.h"

#include <windows.h>

#include <gdiplus.h>

#include "base/system/wide_text_win32.h"

namespace korvant::test {
namespace {

namespace gdiplus = Gdiplus::DllExports;

/// Of the system's own encoder.
constexpr CLSID kPng = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

HBITMAP screenPicture(const RECT& area) {
    const int width = area.right - area.left, height = area.bottom - area.top;
    const HDC screen = GetDC(nullptr), memory = CreateCompatibleDC(screen);
    const HBITMAP picture = CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ before = SelectObject(memory, picture);
    BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return picture;
}

bool save(HBITMAP picture, const std::wstring& path) {
    Gdiplus::GpBitmap* image = nullptr;
    if (gdiplus::GdipCreateBitmapFromHBITMAP(picture, nullptr, &image) != Gdiplus::Ok) return false;
    const bool saved =
        gdiplus::GdipSaveImageToFile(image, path.c_str(), &kPng, nullptr) == Gdiplus::Ok;
    gdiplus::GdipDisposeImage(image);
    return saved;
}

}  // namespace

bool keepScreen(const std::string& path, const std::string& title) {
    RECT area{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    const HWND window = FindWindowW(nullptr, wideOfUtf8(title).c_str());
    if (window && !title.empty()) GetWindowRect(window, &area);
    return keepArea(path, area);
}

bool keepArea(const std::string& path, const RECT& area) {
    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok) return false;
    const HBITMAP picture = screenPicture(area);
    const bool saved = save(picture, wideOfUtf8(path));
    DeleteObject(picture);
    Gdiplus::GdiplusShutdown(token);
    return saved;
}

}  // namespace korvant::test
