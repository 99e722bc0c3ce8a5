#include "expr/failure.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace korvant::expr {
namespace {

using Pieces = std::vector<std::string_view>;

std::string_view cut(std::string_view text, TextRange range) {
    return text.substr(range.begin, range.size());
}

void append(Pieces& pieces, std::initializer_list<std::string_view> more) {
    pieces.insert(pieces.end(), more);
}

/// One prefix for each call that the failure passes through, the outermost first.
void addCalls(Pieces& pieces, std::string_view text, std::span<const ParameterContext> contexts) {
    for (auto each = contexts.rbegin(); each != contexts.rend(); ++each)
        append(pieces, {"Syntax error in function \"", cut(text, each->function),
                        "\" parameters \"", cut(text, each->parameter), "\":\n\t"});
}

void addReason(Pieces& pieces, const Failure& failure, std::string_view text,
               std::string_view count) {
    const std::string_view place = cut(text, failure.place);
    switch (failure.kind) {
        case FailureKind::None:
            break;
        case FailureKind::EmptyText:
            append(pieces, {"Empty expression."});
            break;
        case FailureKind::TextTooLong:
            append(pieces, {"Expression too long."});
            break;
        case FailureKind::TooDeep:
            append(pieces, {"Expression too deep."});
            break;
        case FailureKind::DivisionByZero:
            append(pieces, {"Division by zero."});
            break;
        case FailureKind::EmptyOperand:
            append(pieces, {"Syntax error in expression."});
            break;
        case FailureKind::Unbalanced:
            append(pieces, {"Bad parenthesed expression: \"", place, "\""});
            break;
        case FailureKind::BadOperand:
            append(pieces, {"Syntax error in expression: \"", place, "\""});
            break;
        case FailureKind::UnknownName:
            append(pieces, {"Unknow identifier: \"", place, "\""});
            break;
        case FailureKind::NoParameters:
            append(pieces, {"Syntax error in function \"", place, "\" parameters"});
            break;
        case FailureKind::OddParameters:
            append(pieces, {"Odd number of parameters in function \"", place, "\""});
            break;
        case FailureKind::EvenParameters:
            append(pieces, {"Even number of parameters in function \"", place, "\""});
            break;
        case FailureKind::UnknownFunction:
            append(pieces, {"Unknow function \"", place, "\" with ", count,
                            failure.count == 1 ? " parameter" : " parameters"});
            break;
    }
}

/// Appends what of `piece`, which begins at `at` of the whole, lies before `end`.
void appendUpTo(std::string& to, std::string_view piece, std::size_t at, std::size_t end) {
    if (at < end) to += piece.substr(0, end - at);
}

void appendFrom(std::string& to, std::string_view piece, std::size_t at, std::size_t begin) {
    if (at + piece.size() > begin) to += piece.substr(begin > at ? begin - at : 0);
}

/// The pieces in a row. Nested calls repeat their parameters, so the whole may be far larger
/// than any memory; only the two ends of it are ever put together.
std::string join(const Pieces& pieces) {
    constexpr std::string_view gap = "...";
    std::size_t total = 0;
    for (const std::string_view piece : pieces) total += piece.size();
    const std::size_t kept = kLongestMessage - gap.size();
    const bool whole = total <= kLongestMessage;
    const std::size_t headEnd = whole ? total : kept / 2;
    const std::size_t tailBegin = whole ? total : total - (kept - kept / 2);
    std::string head, tail;
    head.reserve(std::min(total, kLongestMessage));
    std::size_t at = 0;
    for (const std::string_view piece : pieces) {
        appendUpTo(head, piece, at, headEnd);
        appendFrom(tail, piece, at, tailBegin);
        at += piece.size();
    }
    if (!whole) head.append(gap).append(tail);
    return head;
}

}  // namespace

std::string wordFailure(const Failure& failure, std::string_view text,
                        std::span<const ParameterContext> contexts) {
    const std::string count = std::to_string(failure.count);
    Pieces pieces;
    pieces.reserve(8);
    addCalls(pieces, text, contexts);
    addReason(pieces, failure, text, count);
    return join(pieces);
}

}  // namespace korvant::expr
