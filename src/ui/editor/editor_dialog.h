// The window of the script editor.
#pragma once

#include <wx/frame.h>
#include <wx/timer.h>

#include <memory>
#include <span>
#include <string>

#include "editor/control/editor_window.h"
#include "editor/script_editor.h"
#include "ui/editor/editor_menu.h"

namespace korvant::ui::native {
class EndingWatch;
}
class wxEventLoopBase;
class wxStyledTextCtrl;

namespace korvant::ui {

class Workbench;

/// Layout and forwarding; what the editor does is ScriptEditor's. A frame, because a dialog has no
/// menu bar, which is modal all the same: runModal() returns when it has been closed.
class CEditorDlg final : public wxFrame, public EditorWindow {
  public:
    /// `families`: of the run-time library, for the help in call tips.
    explicit CEditorDlg(std::span<const FunctionFamily> families = {});
    ~CEditorDlg() override;

    void setHost(asIScriptEngine* engine, asIScriptContext* context) {
        editor_.setHost(engine, context);
    }
    void setHostText(std::string bytes) { editor_.setHostText(std::move(bytes)); }
    void setHostTitle(std::string title) { editor_.setHostTitle(std::move(title)); }
    void setHostFile(std::string path) { editor_.setHostFile(std::move(path)); }
    const std::string& hostText() const { return editor_.hostText(); }
    const std::string& documentPath() const { return editor_.documentPath(); }

    /// Shows the window and runs an event loop until it is closed. To be called inside
    /// ui::runModal().
    void runModal();

    ControlSend createControl(ControlKind kind) override;
    void setTitle(const std::string& title) override;
    void setMenuChecked(int command, bool checked) override { menus_.check(command, checked); }
    void setMenuEnabled(int command, bool enabled) override { menus_.enable(command, enabled); }
    void setRecentFiles(const std::vector<std::string>& paths) override {
        menus_.setRecentFiles(paths);
    }
    std::optional<std::string> askFile(const FileDialogRequest& request) override;
    Answer ask(const std::string& question, bool withCancel) override;
    void errorBox(const std::string& text) override;
    void showAbout() override;
    std::optional<std::int32_t> askLine(std::int32_t line) override;
    void openFind(std::unique_ptr<FindDialog> dialog) override;
    void openReplace(std::unique_ptr<ReplaceDialog> dialog) override;
    bool openDocument(const std::string& path) override;
    bool clipboardMayHaveText() override;
    void windowCommand(int command) override;
    void beep() override;
    void activate() override;
    void focusEditor() override;
    void setRunning(bool running) override;
    bool explains() const override { return true; }
    bool pumpEvents() override;
    void textLeaves() override;
    void textShown() override;
    void waitWhileHeld(const std::function<bool()>& goesOn) override;
    void endModal() override;

  private:
    void initialise();
    void connect();
    void layOutControls();
    void onKey(wxKeyEvent& event);
    void onClose(wxCloseEvent& event);
    void onContextMenu(wxContextMenuEvent& event);
    void onDisplayLost();
    void onCommand(int command);
    void placeFrame();

    EditorMenus menus_;
    ScriptEditor editor_;
    wxTimer timer_;
    std::unique_ptr<native::EndingWatch> ending_;  ///< while the window is modal
    wxStyledTextCtrl* editorControl_ = nullptr;
    wxStyledTextCtrl* outputControl_ = nullptr;
    wxWindow* rule_ = nullptr;              ///< the line on top of the output control
    std::unique_ptr<Workbench> workbench_;  ///< what stands around the two
    wxEventLoopBase* loop_ = nullptr;       ///< the window's own, while it runs
    bool ended_ = false;
};

}  // namespace korvant::ui
