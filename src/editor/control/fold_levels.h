// Which lines of the text fold: by the lexer, or as the language has it.
#pragma once

#include "editor/control/text_control.h"
#include "language/scope_index.h"

namespace korvant {

/// From here on the control's own lexer says what folds, as in the classic layout.
void foldByLexer(const TextControl& editor);
/// From here on, until foldByLexer(), what folds is what the language says of the text that `index`
/// was read from, which is to be the control's. What is folded stays so as far as it still folds.
void foldBySyntax(const TextControl& editor, const ScopeIndex& index);

}  // namespace korvant
