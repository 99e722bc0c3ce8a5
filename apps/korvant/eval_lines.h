// korvant eval --jsonl: a stream of expressions and their values.
#pragma once

#include <iosfwd>
#include <optional>
#include <string_view>

namespace korvant_app {

/// A number as a user writes it: decimal, a C hexadecimal float ("0x1.8p+1"), "nan", "inf" or
/// "-inf"; nothing for any other text. The process locale has no say.
std::optional<double> readEvalNumber(std::string_view text);

/// Answers every line of `in` with one on `out`; false when a line was no request. A line may
/// have 16 MiB; no more than that is ever held, however long the stream is. Whoever waits for
/// an answer gets it at once.
bool answerEvalLines(std::istream& in, std::ostream& out);

}  // namespace korvant_app
