// What the editor does when its controls tell it something.
#include <algorithm>

#include "base/system/file_io.h"
#include "base/text/text_encoding.h"
#include "editor/control/control_setup.h"
#include "editor/script_editor.h"
#include "editor/stops/line_shift.h"

namespace korvant {

void ScriptEditor::editorNotified(const ControlNotification& notification) {
    if (!left_) guarded([&] { notify(notification); });
}

void ScriptEditor::notify(const ControlNotification& notification) {
    switch (notification.code) {
        case sci::kDoubleClick:
            return command(command_id::kDisplayVariable);
        case sci::kUpdateUi:
            highlightBraces();
            if (!assistedByWindow_) assistant_.caretMoved();
            return tick();
        case sci::kModified:
            return textModified(notification);
        case sci::kZoom:
            return view_.fontChanged();
        case sci::kMarginClick:
            return marginClicked(notification);
        case sci::kCharAdded:
            indentAfter(editor_, notification.character);
            if (!assistedByWindow_) assistant_.characterAdded(notification.character);
            return;
        case sci::kDwellStart:
            if (!assistedByWindow_) assistant_.restedAt(notification.position);
            return;
        case sci::kDwellEnd:
            return assistant_.movedOn();
        case sci::kCallTipClick:
            return assistant_.tipClicked(notification.position);
        default:
            return;
    }
}

void ScriptEditor::outputNotified(const ControlNotification& notification) {
    if (left_ || notification.code != sci::kDoubleClick) return;
    guarded([&] {
        const std::string line = output_.lineAt(notification.position);
        const auto place = reportedPlace(line);
        if (!place) return;
        const std::string source = sourceNamed(line);
        if (!source.empty()) {
            if (!showSource(source)) return;
        } else if (OpenDocument* const named = documents_.find(outputDocument_)) {
            show(*named);
        }
        gotoPlace(*place);
    });
}

/// The text other than that of the run whose file a line of the pane names; empty: none.
std::string ScriptEditor::sourceNamed(const std::string& line) const {
    const auto names = [&line](const std::string& source) {
        const std::string name = " of " + decodeForDisplay(nameOf(source));
        const auto at = line.rfind(name);
        if (source.empty() || at == std::string::npos) return false;
        const auto rest = std::string_view(line).substr(at + name.size());
        return rest.empty() || rest.starts_with(" in ") || rest.starts_with(" (");
    };
    const std::string stopped = stopPlace().source;
    if (names(stopped)) return stopped;
    for (const RunFrame& frame : session_.lastFailure().stack)
        if (names(frame.source)) return frame.source;
    return {};
}

void ScriptEditor::textModified(const ControlNotification& notification) {
    if ((notification.modificationType & (sci::kModInsertText | sci::kModDeleteText)) == 0) return;
    const bool wasModified = document().modified();
    // Undone as far as the text that is safe, it is that text.
    if (!followLines_) current().savePoint = false;
    const bool modified = !current().savePoint || editor_.send(sci::kGetModify) != 0;
    document().setModified(modified);
    documents_.touch(current());
    if (wasModified != modified) refreshTitle();
    modified ? recovery().changed() : recovery().saved();
    assistant_.textChanged();
    if (notification.linesAdded != 0) view_.linesChanged();
    if (!followLines_) return;
    if (const auto shift = lineShiftOf(editor_, notification)) {
        if (runIsShown()) {
            debugger_.follow(*shift);
            inspection_.linesMoved();
        } else {
            breakpoints().follow(*shift);
        }
        plan().follow(*shift);
        current().problems.follow(*shift);
    }
    // Lines that had gone have come back.
    if (runIsShown() && !changedSinceRun() && debugger_.undoLines()) inspection_.linesMoved();
}

/// Deliberate: a brace without a partner is not shown as bad.
void ScriptEditor::highlightBraces() {
    const int position = editor_.caret() - 1;
    const auto word = [](int value) {
        return static_cast<std::uintptr_t>(static_cast<std::intptr_t>(value));
    };
    const auto match = static_cast<int>(editor_.send(sci::kBraceMatch, word(position)));
    if (match < 0)
        editor_.send(sci::kBraceHighlight, word(-1), -1);
    else
        editor_.send(sci::kBraceHighlight, word(position), match);
}

void ScriptEditor::marginClicked(const ControlNotification& notification) {
    const ControlLine line = editor_.lineOf(notification.position);
    if (notification.margin == kFoldMargin)
        editor_.send(sci::kToggleFold, static_cast<std::uintptr_t>(line.index));
    else if (notification.margin == kBookmarkMargin && (!debugger_.busy() || inspection_.held()))
        toggleBreakpointAt(toScript(line).number);
}

/// Columns count bytes of the compiled text: one for each character of Windows Western.
void ScriptEditor::gotoPlace(const ReportedPlace& place) {
    const ControlLine line = toControl(place.line);
    const int start = editor_.lineStart(line);
    const int offset = place.column - 1;
    int position = start + offset;
    if (document().encoding().western)
        position = static_cast<int>(
            editor_.send(sci::kPositionRelative, static_cast<std::uintptr_t>(start), offset));
    window_.activate();
    window_.focusEditor();
    editor_.send(sci::kEnsureVisible, static_cast<std::uintptr_t>(line.index));
    editor_.gotoPosition(position > start ? std::min(position, editor_.lineEnd(line)) : start);
}

}  // namespace korvant
