// The editor's window, opened for a test and used with real keys.
#pragma once

#include <wx/stc/stc.h>

#include <string>

#include "support/desktop.h"
#include "support/script_fixture.h"
#include "support/temporary_folder.h"
#include "support/ui_driver.h"
#include "ui/boxes/wx_frontend.h"
#include "ui/editor/editor_dialog.h"

namespace korvant::test {

/// Looks of marker 0.
enum class MarkerLook { breakpoint = 0, currentLine = 2, error = 4 };

class EditorWindowTest : public ScriptFixture {
  protected:
    EditorWindowTest();
    ~EditorWindowTest() override;

    /// Opens the editor on `text` and lets the driver's steps work in it; the host's text
    /// afterwards. The steps must end with the editor's end.
    std::string edit(const std::string& text);

    void useWindows();

    korvant::test::Found<ui::CEditorDlg> frame() const;
    korvant::test::Found<wxStyledTextCtrl> editor() const;
    korvant::test::Found<wxStyledTextCtrl> pane() const;
    std::string text() const;
    std::string output() const;
    std::string title() const;
    int caretLine() const;  ///< 1-based
    /// 1-based lines with marker 0.
    std::vector<int> markedLines() const;
    MarkerLook markerLook() const;
    bool isEnabled(int command) const;
    bool isChecked(int command) const;
    /// The item of a command in the menu bar; null for none.
    wxMenuItem* menuItem(int command) const;

    // Steps.
    /// Waits until the editor control has the keyboard.
    void ready();
    /// Keys; a line feed is Return.
    void type(const std::string& keys);
    void choose(int command);  ///< from the menu bar, as a click on the item would
    void gotoLine(int line);
    void untilOutput(const std::string& wanted);
    void untilTitle(const std::string& wanted);
    void untilStoppedAt(int line);
    /// Waits until a message box has the keyboard.
    void untilBox();
    void check(std::function<void()> expectations);
    /// Keeps a picture of what is on the screen when everything has been painted.
    void picture(const std::string& name);
    void closeBox();
    void exit();

    std::string ownFile;  ///< that the text is the content of; empty: the host's own text
    UiDriver driver;
    TemporaryFolder folder;

  private:
    Variable settings_{"XDG_CONFIG_HOME", (folder.path() / "settings").string()};
    Variable data_{userDataVariable(), (folder.path() / "data").string()};
    ui::WxFrontend windows_;
};

}  // namespace korvant::test
