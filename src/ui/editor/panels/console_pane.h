// The console of scripts as a pane of the editor's window.
#pragma once

#include <memory>

#include "host/terminal/console_grid.h"
#include "ui/console/console_canvas.h"
#include "ui/console/console_view.h"
#include "ui/kit/painted_window.h"

namespace korvant::ui {

class ConsoleWindow;

/// While one lives, what scripts print and read is shown in the pane and not in the console of the
/// session's services; not while a script runs.
class ConsoleLoan;

class ConsolePane final : public PaintedWindow, public ConsoleView {
  public:
    struct Actions {
        std::function<void()> used;   ///< a script prints or reads: the pane is to be seen
        std::function<void()> asked;  ///< a script waits for what is typed
        std::function<void()> answered;
        std::function<void()> breathe;  ///< a moment for the window, inside a run
    };

    ConsolePane(wxWindow* parent, const Look& look, Actions actions);
    ~ConsolePane() override;

    /// Once scripts use the pane or, not while one runs, they do not any more.
    void lend(bool lent);
    bool lent() const { return loan_ != nullptr; }
    void applyLook();
    /// Takes what is typed: a script prints and reads here now.
    bool inUse() const { return inUse_; }
    bool waiting() const;
    bool empty() const;
    std::string printed() const { return grid_.text(); }  ///< UTF-8
    void clear();
    void copyAll();

    ConsoleCanvas& canvas() override;
    /// The same; null while no script has used the console.
    wxWindow* madeCanvas() const { return canvas_; }
    void appear(void (*interrupt)() noexcept) override;
    void disappear() override;
    bool isSeen() const override { return IsShownOnScreen(); }
    void paintNow() override;
    void emptied() override;
    void setTitle(const wxString&) override {}
    void whileTyping(const std::function<void()>& loop) override;

    bool AcceptsFocus() const override { return !canvas_ || !canvas_->IsShown(); }
    void SetFocus() override;

  private:
    void paint(wxGraphicsContext& context) override;
    void layOut();
    bool wantsBar() const;

    Actions actions_;
    ConsoleGrid grid_;
    wxScrollBar* bar_ = nullptr;
    ConsoleCanvas* canvas_ = nullptr;  ///< made when the first script uses the console
    std::unique_ptr<ConsoleLoan> loan_;
    bool inUse_ = false;
};

}  // namespace korvant::ui
