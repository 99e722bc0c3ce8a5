// What is wrong with the text: the compiler's messages as a list that can be walked.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "editor/stops/line_shift.h"
#include "host/run/build_messages.h"
#include "language/diagnostics.h"

namespace korvant {

class Problems {
  public:
    /// Found while the user types.
    void set(std::vector<Diagnostic> diagnostics);
    /// Said by a build that the user wanted.
    void setBuilt(std::vector<Diagnostic> diagnostics);
    void clear() { set({}); }
    /// By their places; what only explains the message before it stands behind that.
    const std::vector<Diagnostic>& all() const noexcept { return all_; }
    int errors() const noexcept { return errors_; }
    int warnings() const noexcept { return warnings_; }
    bool empty() const noexcept { return errors_ + warnings_ == 0; }
    /// The problem behind (or before) a place, beginning again at the other end; null for none.
    const Diagnostic* next(std::int32_t line, std::int32_t column) const;
    const Diagnostic* previous(std::int32_t line, std::int32_t column) const;
    /// The first error of a 1-based line, else its first warning; null for none.
    const Diagnostic* onLine(std::int32_t line) const;
    /// "2 errors", "1 error, 3 warnings", "No problems found".
    std::string summary() const;
    /// The text has moved below them.
    void follow(const LineShift& shift);
    std::uint64_t generation() const noexcept { return generation_; }
    std::uint64_t builds() const noexcept { return builds_; }

  private:
    std::vector<Diagnostic> all_;
    std::vector<const Diagnostic*> byPlace_;  ///< errors and warnings
    int errors_ = 0, warnings_ = 0;
    std::uint64_t generation_ = 0;
    std::uint64_t builds_ = 0;
};

/// The same form of what a build said. "Compiling ..." becomes the context of the next message.
/// `text` is what was compiled: it tells where the word at a place ends.
std::vector<Diagnostic> diagnosticsOf(const std::vector<BuildMessage>& messages,
                                      const std::string& text);

}  // namespace korvant
