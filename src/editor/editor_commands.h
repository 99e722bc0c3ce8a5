// Everything that the editor can be told to do, as records: menus, keys and help come from here.
#pragma once

#include <span>
#include <string_view>

#include "editor/control/command_ids.h"
#include "editor/control/key_press.h"

namespace korvant {

class ScriptEditor;

enum class EditorMenu { file, edit, view, debug, program, help, context, none };

enum class EnabledWhen {
    always,
    debugging,  ///< while a script stands still
    steps,      ///< and can take steps: not at an exception
    looking,    ///< and is looked into, as in the classic layout it is not
    stoppable,  ///< while a script is suspended or runs
    running,    ///< while it runs
    idle,       ///< while none runs or stands still
    canUndo,
    canRedo,
    selection,  ///< something is selected
    canPaste,
    tabs,        ///< where the window has tabs
    severalTabs  ///< and there are several
};

/// Marks of a record.
enum CommandMark : unsigned {
    kNoMark = 0,
    kToggle = 1,   ///< its item shows a check mark
    kChecked = 2,  ///< and shows it at first
    kSeparatorAfter = 4,
    kSeparatorBefore = 8,
    kContextToo = 16,  ///< stands in the context menu as well
    kTextKeys = 32     ///< its keys are the text's: elsewhere they belong to what has the keyboard
};

struct EditorCommand {
    int id;
    EditorMenu menu;
    /// As in the menu, with "&" and, behind a tab, the key that the label itself tells of.
    const char* label;
    /// The keys that mean it, between blanks: "Ctrl+Y Ctrl+Shift+Z". The first is shown beside the
    /// label where that tells of none.
    const char* keys;
    unsigned marks;
    EnabledWhen enabledWhen;
    /// Null: the window's own, EditorWindow::windowCommand().
    void (ScriptEditor::*handler)();

    bool has(CommandMark mark) const noexcept { return (marks & mark) != 0; }
    bool stands(EditorMenu in) const noexcept {
        return menu == in || (in == EditorMenu::context && has(kContextToo));
    }
    /// The key to show beside the label; empty for none.
    std::string_view shownKey() const noexcept;
};

/// In the order of the menus.
std::span<const EditorCommand> editorCommands();
/// Null for a number that is no command.
const EditorCommand* findCommand(int id);
/// The command that a key means; null for none. `inText`: the text has the keyboard. A function key
/// that a label tells of means that command whatever else is held down with it, unless another
/// record names the two together; with Alt it belongs to the desktop.
const EditorCommand* commandOfKey(const KeyPress& key, bool inText);
/// The title of a menu of the menu bar.
const char* menuTitle(EditorMenu menu);

}  // namespace korvant
