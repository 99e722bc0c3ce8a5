#include "editor/assist/line_editing.h"

#include <string>
#include <string_view>
#include <vector>

namespace korvant {

namespace {

constexpr char kBlanks[] = " \t";
constexpr std::string_view kComment = "//";
constexpr std::string_view kStep = "    ";

TextSpan spanOf(const TextControl& editor, ControlLine line) {
    return {editor.lineStart(line), editor.lineEnd(line)};
}

std::string indentationOf(const std::string& line) {
    return line.substr(0, line.find_first_not_of(kBlanks));
}

bool endsOpen(const std::string& line) {
    const std::size_t last = line.find_last_not_of(kBlanks);
    return last != std::string::npos && line[last] == '{';
}

void replace(const TextControl& editor, TextSpan span, std::string_view text) {
    editor.setTarget(span);
    editor.replaceTarget(text, false);
}

void beginLikeTheOneAbove(const TextControl& editor) {
    const ControlLine line = editor.caretLine();
    if (line.index == 0) return;
    const std::string above = editor.textOf(spanOf(editor, {line.index - 1}));
    std::string indentation = indentationOf(above);
    if (endsOpen(above)) indentation += indentation.find('\t') == std::string::npos ? kStep : "\t";
    if (indentation.empty()) return;
    const int caret = editor.caret();
    replace(editor, {caret, caret}, indentation);
    editor.gotoPosition(caret + static_cast<int>(indentation.size()));
}

void goBackToTheOpenBrace(const TextControl& editor) {
    const int brace = editor.caret() - 1;
    const int start = editor.lineStart(editor.lineOf(brace));
    const std::string before = editor.textOf({start, brace});
    if (before.find_first_not_of(kBlanks) != std::string::npos) return;
    // Braces are matched by what the lexer made of them, and it has not seen this one yet.
    editor.send(sci::kColourise, static_cast<std::uintptr_t>(editor.send(sci::kGetEndStyled)),
                brace + 1);
    const auto open =
        static_cast<int>(editor.send(sci::kBraceMatch, static_cast<std::uintptr_t>(brace)));
    if (open < 0) return;
    const std::string indentation =
        indentationOf(editor.textOf(spanOf(editor, editor.lineOf(open))));
    if (indentation == before) return;
    replace(editor, {start, brace}, indentation);
    editor.gotoPosition(start + static_cast<int>(indentation.size()) + 1);
}

/// A line that is selected up to its very beginning is not meant.
std::vector<ControlLine> selectedLines(const TextControl& editor) {
    const int from = editor.selectionStart(), to = editor.selectionEnd();
    const ControlLine first = editor.lineOf(from);
    ControlLine last = editor.lineOf(to);
    if (last.index > first.index && editor.lineStart(last) == to) --last.index;
    std::vector<ControlLine> lines;
    for (ControlLine line = first; line.index <= last.index; ++line.index) {
        const std::string text = editor.textOf(spanOf(editor, line));
        if (text.find_first_not_of(kBlanks) != std::string::npos) lines.push_back(line);
    }
    return lines;
}

int firstCharacter(const TextControl& editor, ControlLine line) {
    const std::string text = editor.textOf(spanOf(editor, line));
    return editor.lineStart(line) + static_cast<int>(indentationOf(text).size());
}

TextSpan commentMark(const TextControl& editor, ControlLine line) {
    const int start = firstCharacter(editor, line);
    const TextSpan mark{start, start + static_cast<int>(kComment.size())};
    return mark.end <= editor.lineEnd(line) && editor.textOf(mark) == kComment ? mark : TextSpan{};
}

}  // namespace

void indentAfter(const TextControl& editor, int character) {
    if (character == '\n') beginLikeTheOneAbove(editor);
    if (character == '}') goBackToTheOpenBrace(editor);
}

void commentLines(const TextControl& editor) {
    const std::vector<ControlLine> lines = selectedLines(editor);
    bool all = true;
    for (const ControlLine line : lines) all = all && !commentMark(editor, line).empty();
    const UndoStep step(editor);
    for (const ControlLine line : lines) {
        const int start = firstCharacter(editor, line);
        if (all)
            replace(editor, commentMark(editor, line), {});
        else
            replace(editor, {start, start}, kComment);
    }
}

}  // namespace korvant
