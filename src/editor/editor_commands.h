// Everything that the editor can be told to do, as records: menus, keys and help come from here.
#pragma once

#include <span>

#include "editor/control/command_ids.h"

namespace korvant {

class ScriptEditor;

enum class EditorMenu { file, edit, view, debug, program, help, context, none };

enum class EnabledWhen {
    always,
    debugging,  ///< while a script is suspended
    canUndo,
    canRedo,
    selection,  ///< something is selected
    canPaste
};

struct EditorCommand {
    int id;
    EditorMenu menu;
    const char* label;    ///< as in the menu, with "&" and, behind a tab, its key
    int functionKey;      ///< 1 for F1 and so on; 0: none
    bool checkedAtStart;  ///< the item has a check mark, and shows it at first
    bool separatorAfter;
    EnabledWhen enabledWhen;
    void (ScriptEditor::*handler)();
};

/// In the order of the menus.
std::span<const EditorCommand> editorCommands();
/// Null for a number that is no command.
const EditorCommand* findCommand(int id);
/// The title of a menu of the menu bar.
const char* menuTitle(EditorMenu menu);

}  // namespace korvant
