// Expressions: which names stand in them, and what they do there.
#include <algorithm>

#include "language/syntax_reader.h"

namespace korvant {

/// Brackets of all kinds are walked through; only functions without a name are read as such.
void SyntaxReader::readExpression(std::size_t end) {
    end = std::min(end, tokens_.size());
    while (at_ < end) {
        const ScriptToken& found = tokens_[at_];
        if (found.is("function") && is(at_ + 1, "(") && depth_ < kDeepest)
            readLambda(end);
        else if (found.is("cast") && is(at_ + 1, "<"))
            readName(end);
        else if (found.isWord() && (isName(at_) || isBuiltInType(found.text)))
            readName(end);
        else
            ++at_;
    }
}

/// A name, or a type that is constructed or cast to.
void SyntaxReader::readName(std::size_t end) {
    if (is(at_, "cast")) {
        const std::size_t behind = behindArguments(at_ + 1);
        useTypes(at_ + 2, behind);
        at_ = std::clamp(behind, at_ + 1, end);
        return;
    }
    const std::size_t behind = behindType(at_);
    const bool decorated = behind > at_ + 1 && (is(behind - 1, ">") || is(behind - 1, ">>") ||
                                                is(behind - 1, "]") || is(behind - 1, "@"));
    const bool anonymous = decorated && (is(behind, "(") || is(behind, "="));
    if (anonymous && behind <= end && (at_ == 0 || !is(at_ - 1, "."))) {
        useTypes(at_, behind);
        at_ = behind;
        return;
    }
    // The whole path at once, so that a long one is looked at once.
    for (;; at_ += 2) {
        if (isName(at_)) use(at_, roleAt(at_));
        if (!is(at_ + 1, "::") || !mayNameType(at_ + 2) || at_ + 2 >= end) break;
    }
    ++at_;
}

NameUse::Role SyntaxReader::roleAt(std::size_t i) const {
    const ScriptToken& next = token(i + 1);
    if (next.is("::")) return Role::qualifies;
    if (next.is("(")) return Role::calls;
    if (next.is("=")) return Role::writes;
    if (next.is("++") || next.is("--")) return Role::changes;
    const bool compound = next.kind == ScriptToken::Kind::mark && next.text.ends_with('=') &&
                          !next.is("==") && !next.is("!=") && !next.is("<=") && !next.is(">=");
    if (compound) return Role::changes;
    if (i == 0) return Role::reads;
    if (is(i - 1, "++") || is(i - 1, "--")) return Role::changes;
    const bool argument = is(i - 1, "(") || is(i - 1, ",");
    return argument && next.is(":") ? Role::labels : Role::reads;
}

void SyntaxReader::readLambda(std::size_t end) {
    const int function = declareNameless(Kind::lambda, at_);
    const std::size_t open = at_ + 1;
    made(function).nameRange = rangeOf(at_, at_ + 1);
    openScope(Scope::Kind::function, {beginOf(open), endOfText()}, function);
    made(function).parameters = rangeOf(open, past(open));
    ++depth_;
    readParameters(open);
    readBodyOf(function, end);
    --depth_;
    closeScope();
}

}  // namespace korvant
