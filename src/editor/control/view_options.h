// What the View menu turns on and off; kept for as long as the editor lives.
#pragma once

#include "editor/control/control_setup.h"
#include "editor/control/editor_window.h"
#include "editor/control/text_control.h"
#include "editor/control/theme_setup.h"

namespace korvant {

class ViewOptions {
  public:
    ViewOptions(const TextControl& editor, const TextControl& output, EditorWindow& window)
        : editor_(editor), output_(output), window_(window) {}

    /// The light scheme and all margins.
    void setUp();
    /// The margin of the line numbers, where it is shown, takes what the last line's number needs.
    /// To be called when lines have come or gone; cheap while the digits stay as many.
    void linesChanged();
    /// The same, whatever was there before: after a change of the font or its size.
    void fontChanged();
    void toggleLineNumbers();
    void toggleBookmarks();
    void toggleFolding();
    void toggleBackground();
    /// What stands over the light scheme; null: the classic look alone. `theme` must outlive it.
    void useTheme(const ThemeTable* theme, CodeFont font);
    void useNames(ColouredNames names);
    /// The control shows another text, whose colours may be older.
    void textShown();
    bool black() const noexcept { return black_; }

  private:
    void useScheme(ColourScheme scheme);
    void putTheme();
    void showLineNumbers(bool shown);
    void toggleMargin(bool& shown, int margin, int command);

    const TextControl& editor_;
    const TextControl& output_;
    EditorWindow& window_;
    int digits_ = 0;  ///< that the margin of the line numbers has room for
    bool lineNumbers_ = false;
    bool bookmarks_ = false;
    bool folding_ = false;
    bool black_ = false;
    const ThemeTable* theme_ = nullptr;
    bool themed_ = false;  ///< a theme has been put over the classic look
    CodeFont font_;
    ColouredNames names_;
};

}  // namespace korvant
