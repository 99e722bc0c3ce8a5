// What the editor remembers of a file when it leaves it, and brings back when it opens it again.
#include <algorithm>

#include "base/system/user_folders.h"
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
    if (!inspection_.enabled() || !editor_.exists() || document_.path().empty()) return;
    guarded([this] {
        RememberedFile file;
        const ControlLine caret = editor_.caretLine();
        file.caretLine = toScript(caret).number;
        file.caretByte = editor_.caret() - editor_.lineStart(caret);
        file.firstLine =
            1 + static_cast<std::int32_t>(editor_.send(
                    sci::kDocLineFromVisible,
                    static_cast<std::uintptr_t>(editor_.send(sci::kGetFirstVisibleLine))));
        for (std::intptr_t line = 0; (line = editor_.send(sci::kContractedFoldNext,
                                                          static_cast<std::uintptr_t>(line))) >= 0;
             ++line)
            file.folds.push_back(static_cast<std::int32_t>(line + 1));
        for (const Watch& watch : inspection_.watches()) file.watches.push_back(watch.expression);
        for (const PlannedBreakpoint& one : plan_.all(nullptr)) {
            const ControlLine line = toControl(ScriptLine{one.line});
            file.breakpoints.push_back(
                {one.line, editor_.textOf({editor_.lineStart(line), editor_.lineEnd(line)}),
                 one.wishes.enabled, one.wishes.passes, one.wishes.condition, one.wishes.prints,
                 one.classicCondition});
        }
        memory_.remember(absolutePath(document_.path()), file);
    });
}

void ScriptEditor::recallFile() {
    if (!inspection_.enabled() || !editor_.exists() || document_.path().empty()) return;
    guarded([this] {
        RememberedFile file = memory_.recall(absolutePath(document_.path()));
        findAgain(file.breakpoints, linesOf(editor_.text().value_or(std::string())));
        for (const RememberedBreakpoint& one : file.breakpoints) {
            plan_.change(one.line, {one.enabled, one.condition, one.passes, one.prints});
            if (one.enabled) breakpoints_.setCondition(ScriptLine{one.line}, one.classicCondition);
        }
        inspection_.removeWatches();
        for (const std::string& watch : file.watches) inspection_.addWatch(watch);
        recallView(file);
    });
}

void ScriptEditor::recallView(const RememberedFile& file) {
    if (!file.folds.empty()) editor_.send(sci::kColourise, 0, std::intptr_t{-1});
    for (const std::int32_t line : file.folds)
        if (line <= editor_.lineCount())
            editor_.send(sci::kFoldLine, static_cast<std::uintptr_t>(line - 1), std::intptr_t{0});
    const ControlLine caret{std::min(file.caretLine, editor_.lineCount()) - 1};
    const int start = editor_.lineStart(caret);
    const int at = std::min(start + file.caretByte, editor_.lineEnd(caret));
    editor_.select(at, at);
    editor_.send(sci::kSetFirstVisibleLine,
                 static_cast<std::uintptr_t>(editor_.send(
                     sci::kVisibleFromDocLine, static_cast<std::uintptr_t>(file.firstLine - 1))));
}

}  // namespace korvant
