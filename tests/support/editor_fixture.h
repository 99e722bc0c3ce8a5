// An editor on controls without a screen, over a real script engine.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "editor/script_editor.h"
#include "support/fake_editor_window.h"
#include "support/script_fixture.h"
#include "support/temporary_folder.h"

namespace korvant::test {

class EditorFixture : public ScriptFixture {
  protected:
    /// Opens an editor with the host's text, the content of `hostFile` where that is not empty; an
    /// editor that is open is given up as in a crash.
    void open(const std::string& hostText = {}, const std::string& hostFile = {});
    /// Lets the window go: the controls and then the editor.
    void close();

    ScriptEditor& editor() { return *editor_; }
    std::string text() const { return window->editor.text; }
    std::string pane() const { return window->output.text; }
    std::vector<int> marks() const { return window->editor.markedLines(0); }
    void setText(const std::string& bytes);  ///< as if it were pasted
    void caretToLine(int number);
    void selectText(const std::string& what);  ///< its first occurrence
    std::string dataFolder() const { return folder.file("data"); }
    /// Names of the files in a folder of the data folder.
    std::vector<std::string> kept(const std::string& name) const;

    /// Files of the next opening that outlive the editor.
    template <class Files>
    Files& useFiles() {
        auto made = std::make_unique<Files>();
        Files& own = *made;
        ownFiles_.push_back(std::move(made));
        files = &own;
        return own;
    }

    TemporaryFolder folder;
    std::unique_ptr<FakeEditorWindow> window;
    FileOperations* files = &systemFiles();
    std::string programFolder = "/programs";
    std::function<ControlSend(ControlSend)> watch;   ///< of the next opening's window
    std::function<ControlSend(ControlSend)> around;  ///< of the next opening's window

  private:
    std::vector<std::unique_ptr<FileOperations>> ownFiles_;
    std::unique_ptr<ScriptEditor> editor_;
};

}  // namespace korvant::test
