#include "ui/editor/panels/line_notes.h"

#include <wx/stc/stc.h>

#include <algorithm>
#include <map>

#include "ui/kit/painted_window.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {

namespace {

constexpr int kGap = 28, kIcon = 14, kTextX = 20, kLeastRoom = 120;

/// "No matching signatures to 'f(int, int)'": there is little room, and the tip and the list have
/// the rest.
wxString withoutTypes(const wxString& text) {
    const std::size_t begin = text.find('('), end = text.find(")'");
    if (begin == wxString::npos || end == wxString::npos || end < begin) return text;
    const bool quoted = text.Left(begin).Freq('\'') % 2 == 1;
    const bool oneName = text.Mid(begin, end - begin).Freq('\'') == 0;
    return quoted && oneName ? text.Left(begin) + text.Mid(end + 1) : text;
}

}  // namespace

/// A window of its own, because the control has no text behind the end of a line. The text keeps
/// the keyboard.
class LineNote : public PaintedWindow {
  public:
    LineNote(wxStyledTextCtrl& parent, const Look& look) : PaintedWindow(&parent, look, false) {
        Bind(wxEVT_LEFT_DOWN, [&parent](wxMouseEvent&) { parent.SetFocus(); });
        SetCursor(wxCursor(wxCURSOR_ARROW));
    }
    bool AcceptsFocus() const override { return false; }

    void show(const Diagnostic& problem, const wxRect& place) {
        const wxString whole = fromUtf8(problem.text), text = withoutTypes(whole);
        if (text != text_) SetToolTip(whole);
        text_ = text;
        isError_ = problem.kind == Diagnostic::Kind::error;
        setAccessibleName(whole);
        const int width =
            std::min(place.width, dip(kTextX + 4) + textWidth(*this, text_, look().plain));
        SetSize(place.x, place.y, width, place.height);
        Show();
        Refresh();
    }

  private:
    void paint(wxGraphicsContext& context) override {
        const wxSize size = GetClientSize();
        fill(context, wxRect(size), look()->editor);
        const Rgb colour = isError_ ? look()->error : look()->warning;
        paintIcon(context, isError_ ? Icon::error : Icon::warning, 0, (size.y - dip(kIcon)) / 2,
                  dip(kIcon), colourOf(colour), colourOf(look()->editor));
        text(context, shortened(*this, text_, look().plain, size.x - dip(kTextX)), look().plain,
             colour, dip(kTextX), 0, size.y);
    }

    wxString text_;
    bool isError_ = true;
};

LineNotes::LineNotes(wxStyledTextCtrl& control, const Look& look) : control_(control), look_(look) {
    control_.Bind(wxEVT_SET_FOCUS, &LineNotes::onFocus, this);
    control_.Bind(wxEVT_KILL_FOCUS, &LineNotes::onFocus, this);
}

LineNotes::~LineNotes() {
    control_.Unbind(wxEVT_SET_FOCUS, &LineNotes::onFocus, this);
    control_.Unbind(wxEVT_KILL_FOCUS, &LineNotes::onFocus, this);
}

/// A box over the text takes the keyboard when it opens, and gives it back.
void LineNotes::onFocus(wxFocusEvent& event) {
    place();
    event.Skip();
}

/// The toolkit paints what was made last in front, whatever is raised.
bool LineNotes::boxStandsIn(const wxRect& place) const {
    const wxWindowList& parts = control_.GetChildren();
    return std::any_of(parts.begin(), parts.end(), [&place](const wxWindow* part) {
        return part->IsShown() && !dynamic_cast<const LineNote*>(part) &&
               part->GetRect().Intersects(place);
    });
}

void LineNotes::show(const std::vector<Diagnostic>& problems) {
    std::map<int, Diagnostic> first;
    for (const Diagnostic& one : problems)
        if (one.kind != Diagnostic::Kind::information && one.line > 0)
            first.try_emplace(one.line, one);
    problems_.clear();
    for (auto& [line, problem] : first) problems_.push_back(std::move(problem));
    place();
}

void LineNotes::relook() {
    for (LineNote* note : notes_) note->Refresh();
}

void LineNotes::place() {
    std::size_t used = 0;
    const wxSize size = control_.GetClientSize();
    const int caret = control_.GetCurrentLine() + 1;
    const int top = control_.DocLineFromVisible(control_.GetFirstVisibleLine()) + 1;
    const int bottom = top + control_.LinesOnScreen() + 1;
    for (const Diagnostic& problem : problems_) {
        if (problem.line < top || problem.line > bottom || problem.line == caret ||
            !control_.GetLineVisible(problem.line - 1))
            continue;
        const wxPoint end =
            control_.PointFromPosition(control_.GetLineEndPosition(problem.line - 1));
        const int x = end.x + control_.FromDIP(kGap);
        if (end.y < 0 || size.x - x < control_.FromDIP(kLeastRoom)) continue;
        const wxRect place(x, end.y, size.x - x, control_.TextHeight(0));
        if (boxStandsIn(place)) continue;
        if (used == notes_.size()) notes_.push_back(new LineNote(control_, look_));
        notes_[used++]->show(problem, place);
    }
    for (; used < notes_.size(); ++used) notes_[used]->Hide();
}

}  // namespace korvant::ui
