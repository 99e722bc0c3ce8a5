#include "ui/editor/assist/pop_up.h"

#include <wx/tokenzr.h>
#include <wx/utils.h>

#include <algorithm>

#include "ui/kit/window_place.h"

namespace korvant::ui {
namespace {

constexpr int kGap = 2;

/// As much of the beginning as is no wider than `width`, one character at least.
wxString fitting(const wxWindow& window, const wxString& text, const wxFont& font, int width) {
    std::size_t least = 1, most = text.length();
    while (least < most) {
        const std::size_t middle = (least + most + 1) / 2;
        if (textWidth(window, text.Left(middle), font) <= width)
            least = middle;
        else
            most = middle - 1;
    }
    return text.Left(least);
}

}  // namespace

PopUp::PopUp(wxWindow* parent) : wxPopupWindow(parent, wxBORDER_NONE) {
    SetCanFocus(false);
}

void PopUp::showBeside(const wxRect& what, const wxSize& size, bool above) {
    const wxRect area = workArea(GetParent());
    const int gap = FromDIP(kGap);
    const int below = area.GetBottom() - what.GetBottom() - gap, over = what.y - area.y - gap;
    const bool up = above ? over >= size.y || over > below : below < size.y && over > below;
    const int x = std::clamp(what.x, area.x, std::max(area.x, area.GetRight() - size.x));
    const int y = up ? what.y - gap - size.y : what.GetBottom() + 1 + gap;
    SetSize(x, y, size.x, size.y);
    if (!IsShown()) Show();
}

bool PopUp::holdsPointer(int within) const {
    return IsShown() && GetScreenRect().Inflate(within).Contains(wxGetMousePosition());
}

std::vector<wxString> wrappedLines(const wxWindow& window, const wxString& text, const wxFont& font,
                                   int width, std::size_t most) {
    std::vector<wxString> lines;
    wxString line;
    wxStringTokenizer words(text, " ");
    while (words.HasMoreTokens() && lines.size() < most) {
        wxString word = words.GetNextToken();
        const wxString longer = line.empty() ? word : line + " " + word;
        if (textWidth(window, longer, font) <= width) {
            line = longer;
            continue;
        }
        if (!line.empty()) lines.push_back(line);
        while (textWidth(window, word, font) > width && word.length() > 1 && lines.size() < most) {
            const wxString part = fitting(window, word, font, width);
            lines.push_back(part);
            word = word.Mid(part.length());
        }
        line = word;
    }
    if (!line.empty() && lines.size() < most) lines.push_back(line);
    return lines;
}

}  // namespace korvant::ui
