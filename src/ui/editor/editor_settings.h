// What the editor's window remembers for the user.
#pragma once

#include <map>
#include <string>

#include "editor/control/theme_table.h"

namespace korvant::ui {

struct EditorSettings {
    bool classic = false;
    ThemeChoice theme = ThemeChoice::system;
    bool toolbar = true, statusBar = true, outline = false, bottom = true, welcome = true;
    bool tour = true;                                       ///< not shown yet
    int outlineWidth = 0, sideWidth = 0, bottomHeight = 0;  ///< 0: the usual ones
    std::string fontFace;                                   ///< empty: the usual one
    int fontPoints = 0;                                     ///< 0: the usual size
    int zoom = 0;
    int foldedSections = 0;                       ///< bits, in the order of the debug panel
    bool lineCounts = false, timeShares = false;  ///< in the margin, after a run
    bool findMatchCase = false, findWholeWord = false, findExpression = false;
    /// Of the window; a width of 0: none yet.
    int left = 0, top = 0, width = 0, height = 0;
    bool maximised = false;
};

/// The defaults where nothing is kept.
EditorSettings loadEditorSettings();
void saveEditorSettings(const EditorSettings& settings);

/// Which layout a host wants for its editors.
enum class EditorLayoutWish { users, classic, full };
void setEditorLayout(EditorLayoutWish wish);
EditorLayoutWish editorLayout();

}  // namespace korvant::ui
