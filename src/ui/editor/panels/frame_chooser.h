// The frame that is looked at, as a field that opens a list of all: where the stack has no room.
#pragma once

#include <vector>

#include "ui/kit/painted_window.h"

namespace korvant::ui {

class FrameChooser : public PaintedWindow {
  public:
    struct Frame {
        wxString name, place;
    };

    FrameChooser(wxWindow* parent, const Look& look);
    void setFrames(std::vector<Frame> frames, std::size_t chosen, bool isException);
    std::function<void(int)> onChosen;
    /// Shows the list; what is chosen in it is told.
    void open();

  private:
    void paint(wxGraphicsContext& context) override;
    void onKey(wxKeyEvent& event);
    void choose(int frame);

    std::vector<Frame> frames_;
    std::size_t chosen_ = 0;
    bool isException_ = false;
};

}  // namespace korvant::ui
