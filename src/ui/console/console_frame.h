// The frame of the console window.
#pragma once

#include <wx/frame.h>

#include <functional>
#include <memory>

#include "ui/console/console_canvas.h"
#include "ui/console/console_native.h"
#include "ui/console/console_view.h"

namespace korvant::ui {

/// 80 x 25 cells with a scroll bar, no close button. It does not keep a program alive.
class ConsoleFrame : public wxFrame, public ConsoleView {
  public:
    explicit ConsoleFrame(const ConsoleGrid& grid);
    ~ConsoleFrame() override;

    ConsoleCanvas& canvas() override { return *canvas_; }
    std::function<void()> onDestroy;  ///< called when the toolkit takes it down; may be empty
    /// On the screen when this returns, or a moment later where the desktop is slow. Hears the
    /// interrupt keys from then on.
    void appear(void (*interrupt)() noexcept) override;
    void disappear() override;
    bool isSeen() const override { return IsShown(); }
    void paintNow() override;
    void emptied() override { canvas_->update(); }
    void setTitle(const wxString& title) override { SetTitle(title); }
    void whileTyping(const std::function<void()>& loop) override;
    bool ShouldPreventAppExit() const override { return false; }

  private:
    ConsoleCanvas* canvas_;
    std::unique_ptr<native::InterruptKeys> interrupt_;
};

}  // namespace korvant::ui
