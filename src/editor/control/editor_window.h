// What the editor needs of the window that shows it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "editor/control/text_control.h"

namespace korvant {

class FindDialog;
class ReplaceDialog;

enum class ControlKind { editor, output };

/// One entry of a file dialog's list of types.
struct DialogFileType {
    const char* label;
    const char* pattern;
};

struct FileDialogRequest {
    bool saving = false;
    const char* title = "";
    std::vector<DialogFileType> filters;
    bool fileMustExist = false;
    bool pathMustExist = false;
    std::size_t longestPath = 0;  ///< in bytes; a longer choice counts as Cancel
    /// Of a text that has no file yet, when saving; UTF-8.
    std::string suggestedName = {};
    std::string folder = {};  ///< to begin in; empty: where the desktop thinks
};

enum class Answer { yes, no, cancel };

/// The editor's window, or what a test puts in its place. All texts are UTF-8; paths are the
/// system's bytes on POSIX and UTF-8 on Windows. Called on the window's thread only; no function
/// throws. Nothing is owned unless a function says so.
class EditorWindow {
  public:
    virtual ~EditorWindow() = default;

    /// Creates one of the two controls, the editor first. Empty when it could not be created. The
    /// callable must stay usable until ScriptEditor::closed.
    virtual ControlSend createControl(ControlKind kind) = 0;
    virtual void setTitle(const std::string& title) = 0;
    virtual void setMenuChecked(int command, bool checked) = 0;
    virtual void setMenuEnabled(int command, bool enabled) = 0;
    /// The files under File, newest first; their commands are consecutive from kRecentFileFirst.
    virtual void setRecentFiles(const std::vector<std::string>& paths) = 0;

    /// Modal. Nothing when it was cancelled.
    virtual std::optional<std::string> askFile(const FileDialogRequest& request) = 0;
    /// Modal question; `withCancel` offers a third button, and closing the box is then Cancel,
    /// otherwise No.
    virtual Answer ask(const std::string& question, bool withCancel) = 0;
    virtual void errorBox(const std::string& text) = 0;
    virtual void showAbout() = 0;
    /// Modal Go to line dialog holding `line`; the number chosen, nothing on Cancel.
    virtual std::optional<std::int32_t> askLine(std::int32_t line) = 0;
    /// Opens a modeless dialog over what it is given, which the window then owns and destroys at
    /// the latest together with itself.
    virtual void openFind(std::unique_ptr<FindDialog> dialog) = 0;
    virtual void openReplace(std::unique_ptr<ReplaceDialog> dialog) = 0;
    /// Opens a file with the desktop's program for it; false when that failed.
    virtual bool openDocument(const std::string& path) = 0;
    /// Whether a paste may bring something. Asked when a menu opens: waits for nobody.
    virtual bool clipboardMayHaveText() = 0;

    /// A command whose record has no handler of the editor's.
    virtual void windowCommand(int command) = 0;

    virtual void beep() = 0;
    virtual void activate() = 0;     ///< brings the window to the front
    virtual void focusEditor() = 0;  ///< gives the editor control the keyboard
    /// Called at least every 50 ms while the editor drives a script on and on: takes what is
    /// pending of the window's events. True when Escape was pressed or the window is to close.
    virtual bool pumpEvents() = 0;
    /// A build or a run begins or has come to a stop. Meanwhile the text is not changed, and only
    /// Stop does something.
    virtual void setRunning(bool running) = 0;
    /// Whether more may be said about a failure than the classic line in the output pane, and the
    /// caret goes to the first error and not to the message before it.
    virtual bool explains() const { return false; }
    /// The editor's control is about to show another text than now.
    virtual void textLeaves() {}
    /// It shows another text, from its place on as it was left.
    virtual void textShown() {}
    /// A run is held inside itself: lets the user work until `goesOn` answers true. At once where
    /// there is nobody.
    virtual void waitWhileHeld(const std::function<bool()>& goesOn) { (void)goesOn; }
    /// Ends the modal loop; the window is destroyed later by its owner.
    virtual void endModal() = 0;
};

}  // namespace korvant
