#include "ui/editor/panels/function_chooser.h"

#include <algorithm>

#include "ui/kit/ui_native.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kPadding = 10, kIcon = 14, kGap = 6, kArrowGap = 4, kInset = 4, kMostText = 220;
constexpr double kRadius = 5;

}  // namespace

FunctionChooser::FunctionChooser(wxWindow* parent, const Look& look, std::function<void()> open)
    : PaintedWindow(parent, look, true), open_(std::move(open)) {
    native::setAccessibleRole(*this, native::AccessibleRole::button);
    SetToolTip(words("Function at the caret") + " (Ctrl+Shift+O)");
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) { open_(); });
    Bind(wxEVT_KEY_DOWN, &FunctionChooser::onKey, this);
    refreshName();
}

void FunctionChooser::refreshName() {
    setAccessibleName(words("Function at the caret") + ", Ctrl+Shift+O" +
                      (function_.empty() ? wxString() : ", " + function_));
}

void FunctionChooser::setFunction(const wxString& function) {
    if (function == function_) return;
    function_ = function;
    refreshName();
    Refresh();
}

wxString FunctionChooser::shownText() const {
    return shortened(*this, function_.empty() ? words("Function or class") : function_,
                     look().plain, dip(kMostText));
}

int FunctionChooser::wantedWidth() const {
    return 2 * dip(kPadding + kIcon) + dip(kGap + kArrowGap) +
           textWidth(*this, shownText(), look().plain);
}

void FunctionChooser::onKey(wxKeyEvent& event) {
    switch (event.GetKeyCode()) {
        case WXK_RETURN:
        case WXK_SPACE:
        case WXK_DOWN:
            return open_();
        case WXK_LEFT:
            return onLeft();
        default:
            event.Skip();
    }
}

void FunctionChooser::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->chrome);
    const wxRect inside = wxRect(size).Deflate(dip(kInset));
    if (hovered()) rounded(context, inside, FromDIP(kRadius), look()->hover);
    fill(context, {0, size.y - 1, size.x, 1}, look()->border);
    const int iconY = (size.y - dip(kIcon)) / 2;
    const wxString shown = shownText();
    int x = dip(kPadding);
    paintIcon(context, Icon::function, x, iconY, dip(kIcon), colourOf(look()->secondText));
    x += dip(kIcon + kGap);
    text(context, shown, look().plain, look()->secondText, x, 0, size.y);
    x += textWidth(*this, shown, look().plain) + dip(kArrowGap);
    paintIcon(context, Icon::down, x, iconY, dip(kIcon), colourOf(look()->secondText));
    if (focused()) focusMark(context, inside);
}

}  // namespace korvant::ui
