#include "ui/editor/panels/console_pane.h"

#include "host/library/script_console.h"
#include "host/run/script_session.h"
#include "ui/console/console_window.h"
#include "ui/kit/clipboard.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kTextMargin = 12, kRowBeyond = 1;
constexpr char kNothingYet[] = "Nothing printed yet.";

/// The colours of scripts, readable on the pane: by attribute bits without the intense one.
ConsoleColours coloursOf(const ThemeTable& theme, int margin) {
    const Rgb front[8] = {theme.secondText, theme.code.keyword, theme.well,        theme.code.type,
                          theme.error,      theme.code.library, theme.code.number, theme.text};
    ConsoleColours colours = consoleColours();
    for (int i = 0; i < 16; ++i) colours.front[i] = colourOf(front[i % 8]);
    colours.front[8] = colourOf(theme.secondText);
    colours.back[0] = colourOf(theme.editor);
    colours.cursor = colourOf(theme.secondText);
    colours.inputLine = colourOf(theme.selected);
    colours.strongIntense = true;
    colours.margin = margin;
    return colours;
}

}  // namespace

class ConsoleLoan {
  public:
    explicit ConsoleLoan(ConsoleGrid& grid, ConsoleView& view)
        : before_(moduleSession().services()), console_(*before_.console, grid, view) {
        scriptConsole().setAside();
        SessionServices services = before_;
        services.console = &console_;
        moduleSession().setServices(services);
    }
    ~ConsoleLoan() {
        console_.release();
        moduleSession().setServices(before_);
        scriptConsole().takeUp();
    }
    ConsoleLoan(const ConsoleLoan&) = delete;
    ConsoleLoan& operator=(const ConsoleLoan&) = delete;

    bool waiting() const { return console_.waiting(); }

  private:
    SessionServices before_;
    ConsoleWindow console_;
};

ConsolePane::ConsolePane(wxWindow* parent, const Look& look, Actions actions)
    : PaintedWindow(parent, look, true), actions_(std::move(actions)) {
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        layOut();
        event.Skip();
    });
}

ConsolePane::~ConsolePane() = default;

ConsoleCanvas& ConsolePane::canvas() {
    if (canvas_) return *canvas_;
    bar_ = new wxScrollBar(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSB_VERTICAL);
    bar_->DisableFocusFromKeyboard();
    canvas_ = new ConsoleCanvas(this, grid_, *bar_);
    canvas_->setCopiesAll(true);
    native::setAccessibleName(*canvas_, words("Console"));
    applyLook();
    layOut();
    return *canvas_;
}

void ConsolePane::lend(bool lent) {
    if (lent && !loan_) loan_ = std::make_unique<ConsoleLoan>(grid_, *this);
    if (!lent) loan_.reset();
}

void ConsolePane::applyLook() {
    if (!canvas_) return Refresh();
    canvas_->setTextFont(look().code, dip(kRowBeyond));
    canvas_->setColours(coloursOf(*look(), dip(kTextMargin)));
    native::colourScrollBars(*bar_, colourOf(look()->secondText), colourOf(look()->editor));
    Refresh();
}

bool ConsolePane::waiting() const {
    return loan_ && loan_->waiting();
}

bool ConsolePane::empty() const {
    const auto first = grid_.firstLine();
    return grid_.endLine() - first <= 1 && grid_.line(first).empty();
}

void ConsolePane::clear() {
    grid_.clear();
    canvas().update();
    layOut();
}

void ConsolePane::emptied() {
    if (canvas_) canvas_->update();
}

void ConsolePane::copyAll() {
    const bool selected = canvas().hasSelection();
    copyToClipboard(fromUtf8(selected ? canvas().selectedText() : grid_.text()));
}

void ConsolePane::appear(void (*)() noexcept) {
    inUse_ = true;
    if (actions_.used) actions_.used();
    layOut();
}

void ConsolePane::disappear() {
    inUse_ = false;
    canvas().update();
    layOut();
}

void ConsolePane::paintNow() {
    canvas().update();
    if (bar_->IsShown() != wantsBar()) layOut();
    if (actions_.breathe) actions_.breathe();
}

void ConsolePane::whileTyping(const std::function<void()>& loop) {
    if (actions_.asked) actions_.asked();
    canvas().SetFocus();
    canvas().setTyping(true);
    loop();
    canvas().setTyping(false);
    if (actions_.answered) actions_.answered();
}

/// Nothing printed yet is nothing to type into.
void ConsolePane::SetFocus() {
    if (canvas_ && canvas_->IsShown())
        canvas_->SetFocus();
    else
        PaintedWindow::SetFocus();
}

bool ConsolePane::wantsBar() const {
    return grid_.endLine() - grid_.firstLine() > canvas_->shownRows();
}

void ConsolePane::layOut() {
    if (!canvas_) return;
    const wxSize size = GetClientSize();
    const bool shown = inUse_ || !empty(), leaves = !shown && canvas_->HasFocus();
    canvas_->Show(shown);
    if (leaves) PaintedWindow::SetFocus();
    // The toolkit complains of a bar that is shorter than its parts.
    const bool fits = size.y >= bar_->GetBestSize().y;
    bar_->Show(canvas_->IsShown() && fits && wantsBar());
    const int bar = bar_->IsShown() ? bar_->GetBestSize().x : 0;
    canvas_->SetSize(0, 0, std::max(size.x - bar, 0), size.y);
    if (bar > 0) bar_->SetSize(std::max(size.x - bar, 0), 0, bar, size.y);
}

void ConsolePane::paint(wxGraphicsContext& context) {
    fill(context, GetClientRect(), look()->editor);
    text(context, words(kNothingYet), look().plain, look()->secondText, dip(kTextMargin), 0,
         dip(32));
    if (focused()) focusMark(context, GetClientRect());
}

}  // namespace korvant::ui
