// What the View menu turns on and off; kept for as long as the editor lives.
#pragma once

#include "editor/control/control_setup.h"
#include "editor/control/editor_window.h"
#include "editor/control/text_control.h"

namespace korvant {

class ViewOptions {
  public:
    ViewOptions(const TextControl& editor, const TextControl& output, EditorWindow& window)
        : editor_(editor), output_(output), window_(window) {}

    /// The light scheme and all margins.
    void setUp();
    void toggleLineNumbers();
    void toggleBookmarks();
    void toggleFolding();
    void toggleBackground();

  private:
    void useScheme(ColourScheme scheme);
    void showLineNumbers(bool shown);
    void toggleMargin(bool& shown, int margin, int command);

    const TextControl& editor_;
    const TextControl& output_;
    EditorWindow& window_;
    bool lineNumbers_ = false;
    bool bookmarks_ = false;
    bool folding_ = false;
    bool black_ = false;
};

}  // namespace korvant
