// The progress window as a window of the system's own: a toolkit belongs to one thread, and it is
// not this one.
#include <windows.h>

#include <algorithm>
#include <cmath>

#include "base/system/wide_text_win32.h"
#include "ui/boxes/progress_window.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::ui {
namespace {

constexpr wchar_t kClass[] = L"KorvantIDE.Progress";
constexpr int kPadding = 24, kNarrowest = 280;  // on a screen of the usual resolution
constexpr int kCaptionRoom = 48;                // beside the text of the title
constexpr int kFromTop = 6;  // a share of the screen's height; dialogs stand in the middle

COLORREF colourRef(std::uint32_t rgb) {
    return RGB((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF);
}

int screenResolution() {
    const HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dots;
}

/// The system's font of titles, which windows do not tell.
HFONT captionFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return CreateFontIndirectW(&metrics.lfCaptionFont);
}

class SystemProgressWindow final : public ProgressWindow {
  public:
    explicit SystemProgressWindow(const ProgressStyle& style)
        : style_(style), resolution_(screenResolution()), captionFont_(captionFont()) {
        registerClass();
        window_ =
            CreateWindowExW(WS_EX_DLGMODALFRAME, kClass, L"", WS_POPUP | WS_CAPTION, 0, 0,
                            kNarrowest, 80, nullptr, nullptr, GetModuleHandleW(nullptr), this);
        const int height = -static_cast<int>(std::lround(style.fontPoints * resolution_ / 72));
        font_ = CreateFontW(height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                            OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                            DEFAULT_PITCH, wideOfUtf8(style.fontFamily).c_str());
    }
    ~SystemProgressWindow() override {
        if (window_) DestroyWindow(window_);
        DeleteObject(font_);
        DeleteObject(captionFont_);
    }
    SystemProgressWindow(const SystemProgressWindow&) = delete;
    SystemProgressWindow& operator=(const SystemProgressWindow&) = delete;

    void show(bool visible) override {
        if (!visible) {
            ShowWindow(window_, SW_HIDE);
            return;
        }
        place();
        // A dialog that is being answered keeps the keyboard.
        const bool mayTakeKeyboard = !dialogOpen();
        ShowWindow(window_, mayTakeKeyboard ? SW_SHOWNORMAL : SW_SHOWNOACTIVATE);
        if (mayTakeKeyboard) SetForegroundWindow(window_);
    }

    void setTexts(const std::string& caption, const std::string& text) override {
        caption_ = wideOfBytes(caption);
        SetWindowTextW(window_, caption_.c_str());
        text_ = wideOfBytes(text);
        place();
    }

    void redraw() override {
        RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    }

    bool pollEscape() override {
        bool escape = false;
        for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
            escape = escape || (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE);
            DispatchMessageW(&message);
        }
        return escape;
    }

  private:
    static void registerClass() {
        WNDCLASSW type{};
        type.lpfnWndProc = onMessage;
        type.hInstance = GetModuleHandleW(nullptr);
        type.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
        type.lpszClassName = kClass;
        RegisterClassW(&type);  // fails harmlessly when it is registered already
    }

    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM wide, LPARAM data) {
        if (message == WM_NCCREATE)
            SetWindowLongPtrW(
                window, GWLP_USERDATA,
                reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(data)->lpCreateParams));
        auto* self =
            reinterpret_cast<SystemProgressWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == WM_PAINT && self) return self->paint(window);
        if (message == WM_ERASEBKGND) return 1;
        if (message == WM_CLOSE) return 0;
        return DefWindowProcW(window, message, wide, data);
    }

    LRESULT paint(HWND window) {
        PAINTSTRUCT paint{};
        const HDC context = BeginPaint(window, &paint);
        RECT area{};
        GetClientRect(window, &area);
        const HBRUSH brush = CreateSolidBrush(colourRef(style_.background));
        FillRect(context, &area, brush);
        DeleteObject(brush);
        const HGDIOBJ previous = SelectObject(context, font_);
        SetBkMode(context, TRANSPARENT);
        SetTextColor(context, colourRef(style_.text));
        InflateRect(&area, -scaled(kPadding), -scaled(kPadding));
        DrawTextW(context, text_.c_str(), -1, &area, DT_LEFT | DT_NOPREFIX);
        SelectObject(context, previous);
        EndPaint(window, &paint);
        return 0;
    }

    int scaled(int size) const { return MulDiv(size, resolution_, USER_DEFAULT_SCREEN_DPI); }

    SIZE sizeOf(const std::wstring& text, HFONT font) const {
        RECT needed{0, 0, 0, 0};
        const HDC context = GetDC(window_);
        const HGDIOBJ previous = SelectObject(context, font);
        DrawTextW(context, text.c_str(), -1, &needed, DT_CALCRECT | DT_NOPREFIX);
        SelectObject(context, previous);
        ReleaseDC(window_, context);
        return {needed.right, needed.bottom};
    }

    /// Grows only: a window that changes its size with every text is hard to look at.
    void place() {
        const SIZE text = sizeOf(text_, font_), caption = sizeOf(caption_, captionFont_);
        width_ =
            std::max({width_, scaled(kNarrowest), static_cast<int>(text.cx) + scaled(2 * kPadding),
                      static_cast<int>(caption.cx) + scaled(kCaptionRoom)});
        height_ = std::max(height_, static_cast<int>(text.cy) + scaled(2 * kPadding));
        RECT frame{0, 0, width_, height_};
        AdjustWindowRectEx(&frame, WS_POPUP | WS_CAPTION, FALSE, WS_EX_DLGMODALFRAME);
        const int width = std::min<int>(frame.right - frame.left, GetSystemMetrics(SM_CXSCREEN));
        const int height = std::min<int>(frame.bottom - frame.top, GetSystemMetrics(SM_CYSCREEN));
        SetWindowPos(window_, nullptr, (GetSystemMetrics(SM_CXSCREEN) - width) / 2,
                     GetSystemMetrics(SM_CYSCREEN) / kFromTop, width, height,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }

    ProgressStyle style_;
    int resolution_;  ///< dots of an inch
    HWND window_ = nullptr;
    HFONT font_ = nullptr, captionFont_;
    std::wstring caption_, text_;
    int width_ = 0, height_ = 0;
};

}  // namespace

std::unique_ptr<ProgressWindow> makeProgressWindow() {
    return std::make_unique<SystemProgressWindow>(progressStyle());
}

}  // namespace korvant::ui
