#include "ui/console/console_frame.h"

#include <wx/scrolbar.h>
#include <wx/sizer.h>

#include <chrono>

#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

constexpr auto kSlowestDesktop = std::chrono::milliseconds(500);
constexpr int kPieceOfWaiting = 5;

long style() {
    return wxDEFAULT_FRAME_STYLE & ~wxCLOSE_BOX;
}

}  // namespace

ConsoleFrame::ConsoleFrame(const ConsoleGrid& grid)
    : wxFrame(nullptr, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, style()) {
    auto* bar = new wxScrollBar(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSB_VERTICAL);
    bar->DisableFocusFromKeyboard();
    canvas_ = new ConsoleCanvas(this, grid, *bar);
    canvas_->SetMinSize(canvas_->sizeFor(20, 4));
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(canvas_, wxSizerFlags(1).Expand());
    row->Add(bar, wxSizerFlags().Expand());
    SetSizer(row);
    const wxSize text = canvas_->sizeFor(ConsoleGrid::kColumns, ConsoleGrid::kShownRows);
    SetClientSize(text.x + bar->GetBestSize().x, text.y);
    SetMinClientSize(row->GetMinSize());
    // a hidden frame that refused to close would keep its host from ending
    Bind(wxEVT_CLOSE_WINDOW,
         [this](wxCloseEvent& event) { IsShown() ? event.Veto() : event.Skip(); });
}

ConsoleFrame::~ConsoleFrame() {
    if (onDestroy) onDestroy();
}

void ConsoleFrame::appear(void (*interrupt)() noexcept) {
    const bool hidden = !IsShown();
    if (hidden) Show();
    if (IsIconized()) Iconize(false);
    if (!hidden) return;
    canvas_->SetFocus();
    const auto end = std::chrono::steady_clock::now() + kSlowestDesktop;
    while (!native::isViewable(*this) && std::chrono::steady_clock::now() < end) {
        native::pumpWindow(*this);
        native::awaitDisplay(kPieceOfWaiting);
    }
    interrupt_ = native::listenForInterrupt(*this, interrupt);
    paintNow();
}

/// What the display has said about place and size counts before anything is painted.
void ConsoleFrame::paintNow() {
    native::pumpWindow(*this);
    canvas_->update();
    native::paintWindow(*this);
}

void ConsoleFrame::whileTyping(const std::function<void()>& loop) {
    if (!IsActive()) Raise();
    canvas_->SetFocus();
    const native::InputGrab grab(*this);
    loop();
}

void ConsoleFrame::disappear() {
    interrupt_.reset();
    Hide();
}

}  // namespace korvant::ui
