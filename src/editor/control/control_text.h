// A control shows one text at a time. Here the others wait, with all that the control knows of
// them.
#pragma once

#include <cstdint>
#include <vector>

#include "editor/control/text_control.h"

namespace korvant {

/// How somebody looks at a text. Lines are the control's, from 0.
struct TextView {
    int anchor = 0, caret = 0;  ///< bytes
    int firstLine = 0;          ///< that is seen, at the top
    int columnOffset = 0;       ///< pixels that are scrolled to the right
    std::vector<int> folds;     ///< lines whose folds are closed
};

TextView viewOf(const TextControl& control);
/// What lies beyond the text is left out.
void restoreView(const TextControl& control, const TextView& view);

/// One text of a control, with its undo steps, markers and colours. The control's first text costs
/// nothing until another one is shown.
class ControlText {
  public:
    /// `control` outlives it.
    explicit ControlText(const TextControl& control) : control_(control) {}
    ~ControlText() { release(); }
    ControlText(const ControlText&) = delete;
    ControlText& operator=(const ControlText&) = delete;

    /// The control is about to show another text than this one, which it shows now.
    void hide();
    /// The control shows this text, a new and empty one the first time. hide() of the one that it
    /// shows comes before.
    void show();
    /// The text is not needed any more, but by a control that shows it. To be called while the
    /// control is still there.
    void release();

  private:
    const TextControl& control_;
    std::intptr_t document_ = 0;  ///< with one reference of ours; 0: none yet
    TextView view_;
};

}  // namespace korvant
