// A window of the editor that shows nothing: it writes down what it is told and answers what a
// test has prepared.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "editor/control/editor_window.h"
#include "editor/control/search_dialogs.h"
#include "support/memory_control.h"

namespace korvant::test {

class FakeEditorWindow : public EditorWindow {
  public:
    MemoryControl editor;
    MemoryControl output;
    bool editorCreatable = true;
    bool outputCreatable = true;

    std::deque<std::optional<std::string>> files;  ///< chosen in file dialogs; none left: Cancel
    std::deque<Answer> answers;                    ///< to questions; none left: cancel or no
    std::optional<std::int32_t> line;              ///< chosen in the Go to line dialog
    bool documentsOpen = true;
    std::function<bool()> pump;                      ///< what happens while events are pumped
    std::function<void()> whileHeld;                 ///< what the user does at a held stop
    std::function<ControlSend(ControlSend)> watch;   ///< put between editor and its control
    std::function<ControlSend(ControlSend)> around;  ///< put between each control and the world

    std::string title;
    std::map<int, bool> checked;
    std::map<int, bool> menuEnabled;
    std::vector<std::string> recent;
    std::vector<FileDialogRequest> requests;
    std::vector<std::string> questions;
    std::vector<std::string> errors;
    std::vector<std::string> opened;
    std::vector<std::int32_t> linesOffered;
    std::unique_ptr<FindDialog> find;
    std::unique_ptr<ReplaceDialog> replace;
    std::vector<bool> running;  ///< every change
    int beeps = 0;
    int abouts = 0;
    int activations = 0;
    int focuses = 0;
    int pumps = 0;
    bool ended = false;

    bool explaining = false;
    bool explains() const override { return explaining; }
    ControlSend createControl(ControlKind kind) override {
        const bool isEditor = kind == ControlKind::editor;
        if (!(isEditor ? editorCreatable : outputCreatable)) return {};
        ControlSend send = (isEditor ? editor : output).send();
        if (isEditor && watch) send = watch(send);
        return around ? around(send) : send;
    }
    void setTitle(const std::string& text) override { title = text; }
    void setMenuChecked(int command, bool on) override { checked[command] = on; }
    void setMenuEnabled(int command, bool on) override { menuEnabled[command] = on; }
    void setRecentFiles(const std::vector<std::string>& paths) override { recent = paths; }
    std::optional<std::string> askFile(const FileDialogRequest& request) override {
        requests.push_back(request);
        return next(files, std::optional<std::string>());
    }
    Answer ask(const std::string& question, bool withCancel) override {
        questions.push_back(question);
        return next(answers, withCancel ? Answer::cancel : Answer::no);
    }
    void errorBox(const std::string& text) override { errors.push_back(text); }
    void showAbout() override { ++abouts; }
    std::optional<std::int32_t> askLine(std::int32_t offered) override {
        linesOffered.push_back(offered);
        return line;
    }
    void openFind(std::unique_ptr<FindDialog> dialog) override { find = std::move(dialog); }
    void openReplace(std::unique_ptr<ReplaceDialog> dialog) override {
        replace = std::move(dialog);
    }
    bool openDocument(const std::string& path) override {
        opened.push_back(path);
        return documentsOpen;
    }
    bool clipboardMayHaveText() override { return true; }
    void windowCommand(int) override {}
    void beep() override { ++beeps; }
    void activate() override { ++activations; }
    void focusEditor() override { ++focuses; }
    bool pumpEvents() override {
        ++pumps;
        return pump && pump();
    }
    void waitWhileHeld(const std::function<bool()>&) override {
        if (whileHeld) whileHeld();
    }
    void setRunning(bool on) override { running.push_back(on); }
    void endModal() override { ended = true; }

  private:
    template <class Value>
    static Value next(std::deque<Value>& values, Value otherwise) {
        if (values.empty()) return otherwise;
        Value value = values.front();
        values.pop_front();
        return value;
    }
};

}  // namespace korvant::test
