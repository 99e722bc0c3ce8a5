#include "ui/editor/panels/welcome_pane.h"

#include <algorithm>
#include <utility>

#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kLeft = 25, kRight = 24, kTitle = 23, kIntro = 62, kIntroRow = 20, kSteps = 116,
              kStep = 56, kStepGap = 8, kStart = 392, kLinks = 406, kLink = 28, kFoot = 46,
              kCheckGap = 10, kLinkGap = 10;

constexpr const char* kIntroRows[] = {"A script is written on the left, run, and",
                                      "looked into while it stands still."};
constexpr const char* kTourIntro[] = {"The script on the left is a tour. It reads drill",
                                      "samples and prints a table."};

struct Step {
    const char* title;
    const char* what;
    const char* key;
};
constexpr char kPrintsInConsole[] = "What it prints appears in the Console.";
constexpr Step kStepTexts[] = {
    {"Run it", "The table appears in the Console.", "F5"},
    {"Stop at a line", "Click beside a line number, then run.", "F9"},
    {"Go on step by step", "The variables show at the right.", "F11"},
    {"Check without running", "Errors are listed with their lines.", "F7"},
};

}  // namespace

WelcomePane::WelcomePane(wxWindow* parent, const Look& look, bool showAtStart, bool tour,
                         Actions actions)
    : PaintedWindow(parent, look, false), tour_(tour) {
    addLink(Icon::newFile, words("New script"), "Ctrl+N", actions.create);
    addLink(Icon::open, words("Open a script..."), "Ctrl+O", actions.open);
    addLink(Icon::book, words("More examples..."), {}, actions.examples);
    addLink(Icon::help, words("Scripting manual"), "F1", actions.manual);
    close_ = new PaintedButton(this, look, PaintedButton::Kind::plain,
                               {Icon::close, {}, {}, words("Close"), &ThemeTable::secondText},
                               actions.closed);
    atStart_ = new PaintedCheck(this, look, PaintedCheck::Kind::box,
                                words("Show this when the editor starts"), actions.showAtStart);
    atStart_->setWord(&ThemeTable::secondText, kCheckGap);
    atStart_->setValue(showAtStart);
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        place();
        event.Skip();
    });
    setAccessibleName(words("Welcome"));
}

void WelcomePane::leaveTour() {
    if (std::exchange(tour_, false)) Refresh();
}

void WelcomePane::addLink(Icon icon, const wxString& label, const wxString& key,
                          std::function<void()> act) {
    links_.push_back(new PaintedButton(this, look(), PaintedButton::Kind::link,
                                       {icon, label, key, {}, &ThemeTable::accent},
                                       std::move(act)));
    links_.back()->setIconPlace(16, kLinkGap);
    links_.back()->SetCursor(wxCursor(wxCURSOR_HAND));
}

void WelcomePane::place() {
    const wxSize size = GetClientSize();
    int y = dip(kLinks);
    for (PaintedButton* link : links_) {
        link->SetSize(dip(kLeft), y, link->wantedWidth(), dip(kLink));
        y += dip(kLink);
    }
    close_->SetSize(size.x - dip(36), dip(8), dip(28), dip(28));
    atStart_->SetSize(dip(kLeft), std::max(size.y - dip(kFoot), y), atStart_->wantedWidth(),
                      dip(26));
}

void WelcomePane::paintStep(wxGraphicsContext& context, int step, int y) {
    Step shown = kStepTexts[step];
    if (step == 0 && !tour_) shown.what = kPrintsInConsole;
    const int width = GetClientSize().x - dip(kLeft + kRight), x = dip(kLeft);
    context.SetPen(wxPen(colourOf(look()->hair)));
    context.SetBrush(wxBrush(colourOf(look()->panel)));
    context.DrawRoundedRectangle(x + 0.5, y + 0.5, width - 1, dip(kStep) - 1, dip(5));
    rounded(context, {x + dip(13), y + dip(15), dip(26), dip(26)}, dip(13), look()->selected);
    const wxString number = wxString::Format("%d", step + 1);
    text(context, number, look().strong, look()->accent,
         x + dip(26) - textWidth(*this, number, look().strong) / 2, y + dip(15), dip(26));
    text(context, words(shown.title), look().strong, look()->text, x + dip(52), y + dip(9),
         dip(20));
    text(context, words(shown.what), look().small, look()->secondText, x + dip(52), y + dip(28),
         dip(20));
    const int key = textWidth(*this, shown.key, look().small) + dip(12);
    const wxRect place(x + width - dip(12) - key, y + dip(9), key, dip(20));
    context.SetPen(wxPen(colourOf(look()->border)));
    context.SetBrush(wxBrush(colourOf(look()->chrome)));
    context.DrawRoundedRectangle(place.x + 0.5, place.y + 0.5, place.width - 1, place.height - 1,
                                 dip(3));
    text(context, shown.key, look().small, look()->text, place.x + dip(6), place.y, place.height);
}

void WelcomePane::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->chrome);
    fill(context, {0, 0, 1, size.y}, look()->border);
    wxFont large = look().strong;
    large.SetFractionalPointSize(look().plain.GetFractionalPointSize() + 6);
    text(context, words("Welcome"), large, look()->text, dip(kLeft), dip(kTitle), dip(26));
    const char* const* intro = tour_ ? kTourIntro : kIntroRows;
    for (int row = 0; row < 2; ++row)
        text(context, words(intro[row]), look().plain, look()->secondText, dip(kLeft),
             dip(kIntro + row * kIntroRow - 8), dip(kIntroRow));
    for (int step = 0; step < 4; ++step)
        paintStep(context, step, dip(kSteps) + step * dip(kStep + kStepGap));
    text(context, words("Start"), look().strong, look()->text, dip(kLeft), dip(kStart) - dip(10),
         dip(20));
}

}  // namespace korvant::ui
