#include "ui/editor/panels/exception_box.h"

#include <wx/stc/stc.h>

#include <algorithm>

#include "ui/editor/assist/pop_up.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kWidth = 520, kHeight = 72, kAbove = 4, kPadding = 14, kTextX = 38, kRow = 19,
              kTop = 10, kIcon = 16, kLinkGap = 20, kCrossRoom = 33, kEnd = 8, kLeastWidth = 200;
constexpr std::size_t kMostLines = 4;  // of each of its two texts

/// A link that leaves the keyboard where it is.
class QuietButton : public PaintedButton {
  public:
    using PaintedButton::PaintedButton;
    bool AcceptsFocus() const override { return false; }
};

std::vector<wxString> wrapped(const wxWindow& window, wxString text, const wxFont& font,
                              int width) {
    text.Replace("\n", " ");
    std::vector<wxString> lines = wrappedLines(window, text, font, width, kMostLines + 1);
    if (lines.size() <= kMostLines) return lines;
    lines.pop_back();
    lines.back() += "...";
    return lines;
}

}  // namespace

ExceptionBox::ExceptionBox(wxStyledTextCtrl& control, const Look& look, Actions actions)
    : PaintedWindow(&control, look, false), control_(control) {
    Hide();
    addLink(words("What does this mean?"), std::move(actions.explain));
    addLink(words("Copy"), std::move(actions.copy));
    addLink(words("Do not stop here again"), std::move(actions.neverAgain));
    close_ = new QuietButton(this, look, PaintedButton::Kind::plain,
                             {Icon::close, {}, {}, words("Close"), &ThemeTable::secondText},
                             [this] { show(0, {}, {}); });
    close_->setBack(&ThemeTable::errorBand);
    close_->setIconPlace(14, 0);
    SetCursor(wxCursor(wxCURSOR_ARROW));
}

PaintedButton* ExceptionBox::addLink(const wxString& label, std::function<void()> pressed) {
    PaintedButton::Face face;
    face.label = label;
    auto* link = new QuietButton(this, look(), PaintedButton::Kind::link, face, std::move(pressed));
    link->setBack(&ThemeTable::errorBand);
    link->SetCursor(wxCursor(wxCURSOR_HAND));
    links_.push_back(link);
    return link;
}

int ExceptionBox::width() const {
    const int text = std::max(textWidth(*this, message_, look().strong),
                              textWidth(*this, detail_, look().plain));
    int links = 0;
    for (const PaintedButton* link : links_) links += link->wantedWidth() + dip(kLinkGap);
    const int x = control_.PointFromPosition(control_.GetLineIndentPosition(line_ - 1)).x;
    const int room = control_.GetClientSize().x - x - dip(kPadding);
    const int wanted = std::max(dip(kTextX) + std::max(text + dip(kCrossRoom), links), dip(kWidth));
    return std::max(std::min(wanted, room), dip(kLeastWidth));
}

/// In a narrow window the texts go on below.
void ExceptionBox::wrap() {
    const int own = width();
    messageLines_ = wrapped(*this, message_, look().strong, own - dip(kTextX + kCrossRoom));
    detailLines_ = wrapped(*this, detail_, look().plain, own - dip(kTextX + kEnd));
}

int ExceptionBox::height() const {
    return dip(kHeight + (static_cast<int>(messageLines_.size() + detailLines_.size()) - 2) * kRow);
}

/// Lines grow and shrink with the font, the zoom and the theme.
int ExceptionBox::rowsNeeded() const {
    const int row = std::max(control_.TextHeight(0), 1);
    return (height() + 2 * dip(kAbove) + row - 1) / row;
}

/// Blank lines of the control's own keep the room, so that the text below moves down.
void ExceptionBox::makeRoom(bool room) {
    control_.AnnotationClearAll();
    if (line_ == 0) return;
    wrap();
    rows_ = rowsNeeded();
    if (room) control_.AnnotationSetText(line_ - 1, wxString('\n', rows_ - 1));
    control_.AnnotationSetVisible(room ? wxSTC_ANNOTATION_STANDARD : wxSTC_ANNOTATION_HIDDEN);
}

void ExceptionBox::show(int line, const wxString& message, const wxString& detail) {
    makeRoom(false);
    line_ = line;
    message_ = message;
    detail_ = detail;
    setAccessibleName(message + ". " + detail);
    makeRoom(true);
    place();
    Refresh();
}

void ExceptionBox::moveTo(int line) {
    line_ = line;
    makeRoom(true);
    place();
}

void ExceptionBox::place() {
    const bool shown = line_ > 0 && control_.GetLineVisible(line_ - 1);
    Show(shown);
    if (!shown) return;
    wrap();
    if (rows_ != rowsNeeded()) makeRoom(true);
    const wxPoint at = control_.PointFromPosition(control_.GetLineIndentPosition(line_ - 1));
    const int own = width(), rows = static_cast<int>(messageLines_.size() + detailLines_.size());
    SetSize(at.x, at.y + control_.TextHeight(0) + dip(kAbove), own, height());
    int x = dip(kTextX);
    for (PaintedButton* link : links_) {
        link->SetSize(x, dip(kTop + rows * kRow - 1), link->wantedWidth(), dip(kRow + 2));
        x += link->wantedWidth() + dip(kLinkGap);
    }
    close_->SetSize(own - dip(32), dip(6), dip(24), dip(24));
}

void ExceptionBox::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->editor);
    context.SetBrush(wxBrush(colourOf(look()->errorBand)));
    context.SetPen(wxPen(colourOf(look()->errorEdge)));
    context.DrawRoundedRectangle(0.5, 0.5, size.x - 1, size.y - 1, dip(5));
    paintIcon(context, Icon::bolt, dip(kPadding), dip(kTop) + 1, dip(kIcon),
              colourOf(look()->error));
    int y = dip(kTop);
    const auto put = [&](const wxString& line, const wxFont& font, Rgb colour) {
        text(context, line, font, colour, dip(kTextX), y, dip(kRow));
        y += dip(kRow);
    };
    for (const wxString& line : messageLines_) put(line, look().strong, look()->error);
    for (const wxString& line : detailLines_) put(line, look().plain, look()->text);
}

}  // namespace korvant::ui
