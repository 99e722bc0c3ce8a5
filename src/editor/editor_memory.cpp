// What the editor remembers of a file when it leaves it, and brings back when it opens it again.
#include <algorithm>

#include "base/system/user_folders.h"
#include "editor/control/fold_levels.h"
#include "editor/control/live_help.h"
#include "editor/script_editor.h"

namespace korvant {

namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

}  // namespace

/// Only of a file, and only where somebody looks into runs: the classic layout begins anew.
void ScriptEditor::rememberFile() {
    if (!inspection_.enabled() || !editor_.exists() || document().path().empty()) return;
    guarded([this] {
        RememberedFile file;
        const ControlLine caret = editor_.caretLine();
        file.caretLine = toScript(caret).number;
        file.caretByte = editor_.caret() - editor_.lineStart(caret);
        const TextView view = viewOf(editor_);
        file.firstLine = view.firstLine + 1;
        for (const int line : view.folds) file.folds.push_back(line + 1);
        file.watches = watchesNow();
        for (const PlannedBreakpoint& one : plan().all(nullptr)) {
            const ControlLine line = toControl(ScriptLine{one.line});
            file.breakpoints.push_back(
                {one.line, editor_.textOf({editor_.lineStart(line), editor_.lineEnd(line)}),
                 one.wishes.enabled, one.wishes.passes, one.wishes.condition, one.wishes.prints,
                 one.classicCondition});
        }
        memory_.remember(absolutePath(document().path()), file);
    });
}

void ScriptEditor::recallFile() {
    if (!inspection_.enabled() || !editor_.exists() || document().path().empty()) return;
    guarded([this] {
        RememberedFile file = memory_.recall(absolutePath(document().path()));
        findAgain(file.breakpoints, linesOf(editor_.text().value_or(std::string())));
        for (const RememberedBreakpoint& one : file.breakpoints) {
            plan().change(one.line, {one.enabled, one.condition, one.passes, one.prints});
            if (one.enabled) breakpoints().setCondition(ScriptLine{one.line}, one.classicCondition);
        }
        setWatches(file.watches);
        recallView(file);
    });
}

void ScriptEditor::recallView(const RememberedFile& file) {
    TextView view;
    for (const std::int32_t line : file.folds) view.folds.push_back(line - 1);
    if (!view.folds.empty() && editor_.length() > kLongestLive)
        editor_.send(sci::kColourise, 0, std::intptr_t{-1});
    else if (!view.folds.empty())
        foldBySyntax(editor_, ScopeIndex(editor_.text().value_or(std::string())));
    const ControlLine caret{std::min(file.caretLine, editor_.lineCount()) - 1};
    const int start = editor_.lineStart(caret);
    view.anchor = view.caret = std::min(start + file.caretByte, editor_.lineEnd(caret));
    view.firstLine = file.firstLine - 1;
    restoreView(editor_, view);
}

/// What is watched is of one text: of the one in view, but for a run that stands still.
void ScriptEditor::useWatches() {
    if (watchDocument_ == current().id || debugger_.debugging() || debugger_.busy()) return;
    if (OpenDocument* const before = documents_.find(watchDocument_)) {
        before->watches.clear();
        for (const Watch& watch : inspection_.watches())
            before->watches.push_back(watch.expression);
    }
    watchDocument_ = current().id;
    setWatches(std::move(current().watches));
}

void ScriptEditor::setWatches(std::vector<std::string> watches) {
    if (watchDocument_ != current().id) {
        current().watches = std::move(watches);
        return;
    }
    inspection_.removeWatches();
    for (const std::string& watch : watches) inspection_.addWatch(watch);
}

std::vector<std::string> ScriptEditor::watchesNow() const {
    if (watchDocument_ != current().id) return current().watches;
    std::vector<std::string> watches;
    for (const Watch& watch : inspection_.watches()) watches.push_back(watch.expression);
    return watches;
}

}  // namespace korvant
