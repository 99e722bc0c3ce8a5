#include "ui/form/form_refusal.h"

#include <wx/dcbuffer.h>
#include <wx/textwrapper.h>

#include <algorithm>

#include "ui/form/form_marks.h"
#include "ui/kit/theme.h"

namespace korvant::ui {
namespace {

constexpr int kPadding = 6;

class Wrapper : public wxTextWrapper {
  public:
    wxString wrapped(wxWindow* window, const wxString& text, int width) {
        Wrap(window, text, width);
        return result_;
    }

  private:
    void OnOutputLine(const wxString& line) override { result_ += line; }
    void OnNewLine() override { result_ += '\n'; }

    wxString result_;
};

}  // namespace

FormRefusal::FormRefusal(wxWindow* parent, const wxString& message, const wxRect& row) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, wxID_ANY);
    Bind(wxEVT_PAINT, &FormRefusal::onPaint, this);
    const int padding = FromDIP(kPadding), mark = FromDIP(kMarkSize);
    const wxSize room = parent->GetClientSize();
    const int chrome = 3 * padding + mark;
    const int width = std::max(room.x - row.x, room.x * 3 / 5) - chrome;
    message_ = Wrapper().wrapped(this, message, std::max(width, FromDIP(120)));
    wxClientDC dc(this);
    dc.SetFont(GetFont());
    const wxSize text = dc.GetMultiLineTextExtent(message_);
    const wxSize size(text.x + chrome, std::max(text.y, mark) + 2 * padding);
    const int below = row.GetBottom() + 1;
    const bool fits = below + size.y <= room.y || row.y < size.y;
    SetSize(std::max(0, std::min(row.x, room.x - size.x)), fits ? below : row.y - size.y, size.x,
            size.y);
    Raise();
}

void FormRefusal::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    const Theme theme = currentTheme();
    const int padding = FromDIP(kPadding), mark = FromDIP(kMarkSize);
    const wxSize size = GetClientSize();
    dc.SetPen(theme.error);
    dc.SetBrush(theme.errorTint);
    dc.DrawRectangle(wxPoint(0, 0), size);
    drawMark(dc, wxRect(padding, padding, mark, mark), Severity::error);
    dc.SetFont(GetFont());
    dc.SetTextForeground(theme.fieldText);
    dc.DrawLabel(message_, wxRect(2 * padding + mark, padding, size.x, size.y - 2 * padding));
}

}  // namespace korvant::ui
