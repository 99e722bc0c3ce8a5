#include <windows.h>

#include <cstdlib>

#include "base/system/wide_text_win32.h"
#include "ui/boxes/progress_window.h"

namespace korvant::ui {
namespace {

constexpr int kPointsOfInch = 72;

std::uint32_t systemColour(int which) {
    const COLORREF colour = GetSysColor(which);
    return std::uint32_t{GetRValue(colour)} << 16 | std::uint32_t{GetGValue(colour)} << 8 |
           GetBValue(colour);
}

}  // namespace

/// Before the toolkit runs: the colours and the font of the system's own boxes.
ProgressStyle guessedProgressStyle() {
    ProgressStyle style;
    style.background = systemColour(COLOR_BTNFACE);
    style.text = systemColour(COLOR_BTNTEXT);
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return style;
    const int pixels = std::abs(metrics.lfMessageFont.lfHeight);
    style.fontFamily = utf8OfWide(metrics.lfMessageFont.lfFaceName);
    const HDC screen = GetDC(nullptr);
    const int dotsOfInch = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    style.fontPoints = static_cast<double>(pixels) * kPointsOfInch / dotsOfInch;
    return style;
}

}  // namespace korvant::ui
