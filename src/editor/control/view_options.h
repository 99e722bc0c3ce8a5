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
    void toggleLineNumbers();
    void toggleBookmarks();
    void toggleFolding();
    void toggleBackground();
    /// What stands over the light scheme; null: the classic look alone. `theme` must outlive it.
    void useTheme(const ThemeTable* theme, std::string face);
    void useNames(ColouredNames names);
    bool black() const noexcept { return black_; }

  private:
    void useScheme(ColourScheme scheme);
    void putTheme();
    void showLineNumbers(bool shown);
    void toggleMargin(bool& shown, int margin, int command);

    const TextControl& editor_;
    const TextControl& output_;
    EditorWindow& window_;
    bool lineNumbers_ = false;
    bool bookmarks_ = false;
    bool folding_ = false;
    bool black_ = false;
    const ThemeTable* theme_ = nullptr;
    bool themed_ = false;  ///< a theme has been put over the classic look
    std::string face_;
    ColouredNames names_;
};

}  // namespace korvant
