// Which lines of the text fold: by the lexer, or as the language has it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "editor/control/text_control.h"
#include "language/scope_index.h"

namespace korvant {

/// From here on the control's own lexer says what folds, as in the classic layout.
void foldByLexer(const TextControl& editor);
/// From here on, until foldByLexer(), what folds is what the language says of the text that `index`
/// was read from, which is to be the control's. What is folded stays so as far as it still folds.
void foldBySyntax(const TextControl& editor, const ScopeIndex& index);

/// The same again and again while the text changes: only lines that may fold otherwise are asked
/// about. Knows one text at a time.
class SyntaxFolds {
  public:
    /// `editor` outlives this.
    explicit SyntaxFolds(const TextControl& editor) : editor_(editor) {}

    void notified(const ControlNotification& notification);
    void show(const ScopeIndex& index);
    /// Another text is in view, or something else has set what folds.
    void forget() { shown_.clear(); }

  private:
    const TextControl& editor_;
    std::vector<std::intptr_t> shown_;  ///< by line; empty: not known
    std::size_t above_ = 0;             ///< so many lines at the begin are as they were then
    std::size_t below_ = 0;             ///< and so many at the end
};

}  // namespace korvant
