// Places in a script's text that only its tokens tell.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "debug/declared_variables.h"

namespace korvant {

/// A script's text with what the debugger asks of it. Lines and columns count from 1, in bytes.
class StatementStarts {
  public:
    explicit StatementStarts(std::string text);
    ~StatementStarts();
    StatementStarts(const StatementStarts&) = delete;
    StatementStarts& operator=(const StatementStarts&) = delete;

    std::int32_t lineCount() const;
    const std::string& text() const;
    /// Lines, ascending, at which the condition or the increments of a loop's head begin.
    std::vector<std::int32_t> loopHeadLines() const;
    /// Whether a place lies in a block of `try`.
    bool insideTry(std::int32_t line, std::int32_t column) const;
    /// Whether the statement that begins at or behind a place declares the variable: it exists
    /// there, and nothing has set it.
    bool declares(std::int32_t line, std::int32_t column, std::string_view name) const;
    /// Whether nothing can have set the variable of a plain type that is seen at the statement that
    /// begins at a place: declared without a value, and not named since. `begun`: the statement is
    /// being executed. False where this cannot be told.
    bool neverSet(std::int32_t line, std::int32_t column, std::string_view name, bool begun) const;
    /// Made when it is first asked for. Script's thread only.
    const DeclaredVariables& variables() const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace korvant
