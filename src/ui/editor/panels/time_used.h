// How long the script has run, and how much of its time that is.
#pragma once

#include "ui/kit/painted_window.h"

namespace korvant::ui {

class TimeUsed : public PaintedWindow {
  public:
    TimeUsed(wxWindow* parent, const Look& look);
    /// Milliseconds; a limit of 0 is none.
    void setTime(std::uint32_t used, std::uint32_t limit);
    int wantedWidth() const;

  private:
    int shareWidth(std::uint32_t used) const;
    bool isShort(std::uint32_t used) const;
    void paint(wxGraphicsContext& context) override;

    std::uint32_t used_ = 0, limit_ = 0;
};

/// "1:05" of milliseconds.
wxString clockText(std::uint32_t milliseconds);
/// The same with what is not whole seconds: "0:00.3".
wxString limitText(std::uint32_t milliseconds);

}  // namespace korvant::ui
