#include "editor/control/fold_levels.h"

#include <algorithm>
#include <utility>

#include "editor/control/live_help.h"
#include "language/script_shape.h"

namespace korvant {

namespace {

constexpr std::intptr_t kBase = 0x400, kHeader = 0x2000;
/// Lines that were folded show when the caret comes to them, or when what they folded into goes.
constexpr std::uintptr_t kShow = 1, kChange = 4;
constexpr char kFold[] = "fold";

bool lexerFolds(const TextControl& editor) {
    return editor.send(sci::kGetPropertyInt, reinterpret_cast<std::uintptr_t>(kFold),
                       std::intptr_t{1}) != 0;
}

void setLexerFolds(const TextControl& editor, bool folds) {
    editor.send(sci::kSetProperty, reinterpret_cast<std::uintptr_t>(kFold), folds ? "1" : "0");
    editor.send(sci::kSetAutomaticFold, folds ? 0 : kShow | kChange);
}

/// A line's level is how many folds it stands in.
std::vector<std::intptr_t> levelsOf(const ScopeIndex& index, std::size_t lines) {
    std::vector<std::intptr_t> change(lines + 1), levels(lines);
    const std::vector<FoldedLines> folds = foldingOf(index);
    for (const FoldedLines& fold : folds) {
        if (fold.last >= lines) continue;
        ++change[fold.first + 1];
        --change[fold.last + 1];
    }
    std::intptr_t level = kBase;
    for (std::size_t line = 0; line < lines; ++line) levels[line] = level += change[line];
    for (const FoldedLines& fold : folds)
        if (fold.last < lines) levels[fold.first] |= kHeader;
    return levels;
}

}  // namespace

void foldByLexer(const TextControl& editor) {
    if (lexerFolds(editor)) return;
    setLexerFolds(editor, true);
    // The rest of a long text when it comes into view.
    editor.send(sci::kStartStyling, 0);
    if (editor.length() <= kLongestLive) editor.send(sci::kColourise, 0, std::intptr_t{-1});
}

void foldBySyntax(const TextControl& editor, const ScopeIndex& index) {
    SyntaxFolds(editor).show(index);
}

/// Of the lines that are changed the control keeps what it likes.
void SyntaxFolds::notified(const ControlNotification& notification) {
    const int changes = sci::kModInsertText | sci::kModDeleteText;
    if (notification.code != sci::kModified || (notification.modificationType & changes) == 0)
        return;
    const int first = editor_.lineOf(notification.position).index;
    const int last = first + std::max(notification.linesAdded, 0);
    // One line beside them, too.
    above_ = std::min(above_, static_cast<std::size_t>(std::max(first - 1, 0)));
    below_ =
        std::min(below_, static_cast<std::size_t>(std::max(editor_.lineCount() - 2 - last, 0)));
}

void SyntaxFolds::show(const ScopeIndex& index) {
    if (lexerFolds(editor_)) {
        setLexerFolds(editor_, false);
        forget();
    }
    const auto lines = static_cast<std::size_t>(editor_.lineCount());
    std::vector<std::intptr_t> levels = levelsOf(index, lines);
    const std::size_t before = shown_.size();
    if (shown_.empty()) above_ = below_ = 0;
    for (std::size_t line = 0; line < lines; ++line) {
        const std::size_t fromEnd = lines - line;
        const std::intptr_t level = line < above_       ? shown_[line]
                                    : fromEnd <= below_ ? shown_[before - fromEnd]
                                                        : editor_.send(sci::kGetFoldLevel, line);
        if (level != levels[line]) editor_.send(sci::kSetFoldLevel, line, levels[line]);
    }
    shown_ = std::move(levels);
    above_ = below_ = lines;
}

}  // namespace korvant
