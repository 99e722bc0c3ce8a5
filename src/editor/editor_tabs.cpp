// Several texts in one editor: which one is in view, and how they come and go.
#include <algorithm>

#include "editor/script_editor.h"

namespace korvant {

void ScriptEditor::show(OpenDocument& wanted) {
    if (&wanted == &current()) return;
    leaveText();
    documents_.show(wanted);
    textExchanged();
}

void ScriptEditor::leaveText() {
    window_.textLeaves();
    editor_.cancelTip();
    editor_.send(sci::kAutoCCancel);
}

/// Another text is in view than before.
void ScriptEditor::textExchanged() {
    useWatches();
    view_.textShown();
    assistant_.textChanged();
    window_.setMenuChecked(command_id::kRecoveryCopies, recovery().enabled());
    refreshTitle();
    window_.textShown();
}

void ScriptEditor::showTab(std::uint64_t id) {
    if (left_ || (debugger_.busy() && !inspection_.held())) return;
    run([this, id] {
        if (OpenDocument* const wanted = documents_.find(id)) show(*wanted);
    });
}

/// Nobody has typed anything into it, and it is no file's, nor one that runs.
bool ScriptEditor::isUntouched() const {
    const bool blank = editor_.length() == 0 || current().isTour();
    const bool runs = runIsShown() && debugger_.busy();
    return blank && !runs && !document().modified() && document().path().empty();
}

void ScriptEditor::newTab() {
    OpenDocument& before = current();
    const bool replaces = isUntouched();
    std::string name = EditorDocument::kUntitled;
    const auto isTaken = [this, &before, replaces](const std::string& wanted) {
        for (std::size_t i = 0; i < documents_.count(); ++i) {
            const OpenDocument& one = documents_.at(i);
            const bool goes = replaces && &one == &before;
            if (!goes && one.document.name() == wanted) return true;
        }
        return false;
    };
    for (int number = 2; isTaken(name); ++number)
        name = EditorDocument::kUntitled + (" " + std::to_string(number));
    leaveText();
    documents_.add().document.setName(name);
    if (replaces) replace(before);
    textExchanged();
}

/// A file that cannot be read leaves everything as it is.
void ScriptEditor::openTab(const std::string& path) {
    if (OpenDocument* const open = documents_.findFile(path)) return show(*open);
    OpenDocument& before = current();
    const bool replaces = isUntouched();
    leaveText();
    OpenDocument& added = documents_.add();
    bool loaded = false;
    {
        const OwnText own(*this);
        loaded = added.document.load(path);
    }
    if (!loaded) {
        documents_.show(before);
        documents_.remove(added);
        return textExchanged();
    }
    editor_.send(sci::kEmptyUndoBuffer);
    added.recovery.saved();
    noteRecent(path);
    if (replaces) replace(before);
    textExchanged();
    recallFile();
}

/// What is in view came in the place of this text, which nobody misses.
void ScriptEditor::replace(OpenDocument& before) {
    if (before.id == hostDocument_) hostDocument_ = current().id;
    close(before);
}

/// Without a question.
void ScriptEditor::close(OpenDocument& closed) {
    if (closed.id == runDocument_ && debugger_.debugging()) {
        OpenDocument& wanted = current();
        stopDebugging();
        documents_.show(wanted);
    }
    documents_.remove(closed);
    if (!documents_.find(runDocument_)) debugger_.use(breakpoints());
}

void ScriptEditor::closeTab(std::uint64_t id) {
    OpenDocument* const closed = documents_.find(id);
    const bool runs = debugger_.busy() && (!inspection_.held() || id == runDocument_);
    if (left_ || !tabs_ || !closed || runs) return window_.beep();
    run([this, closed] {
        OpenDocument& before = current();
        if (documents_.count() == 1 && isUntouched()) return;
        if (closed->document.modified()) {
            show(*closed);
            const Answer answer = askAboutChanges();
            if (answer == Answer::cancel || (answer == Answer::yes && !saveWhole()))
                return show(before);
            if (answer == Answer::no) giveUp();
        }
        leaveText();
        documents_.show(*closed);
        rememberFile();
        recovery().begin();
        if (closed->id == hostDocument_) hostDocument_ = 0;
        if (documents_.count() == 1) documents_.add().document.setName(EditorDocument::kUntitled);
        if (&before != closed) documents_.show(before);
        close(*closed);
        textExchanged();
    });
}

/// Where an unsaved text of an earlier opening goes.
OpenDocument& ScriptEditor::placeFor(const RecoveryRecord& record) {
    OpenDocument* const open = record.path.empty() ? nullptr : documents_.findFile(record.path);
    if (open && !open->document.modified()) {
        show(*open);
        return *open;
    }
    if (!isUntouched()) newTab();
    return current();
}

}  // namespace korvant
