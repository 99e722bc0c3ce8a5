#include "editor/control/fold_levels.h"

#include <vector>

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
    editor.send(sci::kColourise, 0, std::intptr_t{-1});
}

void foldBySyntax(const TextControl& editor, const ScopeIndex& index) {
    if (lexerFolds(editor)) setLexerFolds(editor, false);
    const auto lines = static_cast<std::size_t>(editor.lineCount());
    const std::vector<std::intptr_t> levels = levelsOf(index, lines);
    for (std::size_t line = 0; line < lines; ++line)
        if (editor.send(sci::kGetFoldLevel, line) != levels[line])
            editor.send(sci::kSetFoldLevel, line, levels[line]);
}

}  // namespace korvant
