// Code: statements, and where they begin.
#include <algorithm>
#include <iterator>

#include "language/syntax_reader.h"

namespace korvant {

void SyntaxReader::readStatements(std::size_t end) {
    while (at_ < end) {
        const std::size_t before = at_;
        readStatement(end);
        if (at_ == before) ++at_;
    }
}

void SyntaxReader::readBlock(std::size_t open, std::size_t end) {
    const std::size_t close = std::min(closing(open), end), behind = std::min(past(open), end);
    openScope(Scope::Kind::block, rangeOf(open, behind), kNoIndex);
    at_ = open + 1;
    readStatements(close);
    at_ = behind;
    closeScope();
}

void SyntaxReader::readStatement(std::size_t end) {
    if (at_ >= end) return;
    if (++depth_ > kDeepest) {
        readExpression(endOfStatement(at_, end));
        at_ = std::min(at_ + 1, end);
    } else if (is(at_, "{")) {
        readBlock(at_, end);
    } else if (is(at_, ";") || is(at_, "}") || is(at_, ")") || is(at_, "]")) {
        ++at_;
    } else if (is(at_, "#") && beginsLine(at_)) {
        skipDirective();
    } else if (!readControl(end)) {
        readSimple(end);
    }
    --depth_;
}

/// What begins with a word that holds other statements.
bool SyntaxReader::readControl(std::size_t end) {
    if (is(at_, "for")) {
        readFor(end);
    } else if (is(at_, "switch")) {
        readSwitch(end);
    } else if (is(at_, "if") || is(at_, "while")) {
        const bool conditional = is(at_, "if");
        readBracketed(end);
        readStatement(end);
        if (conditional && at_ < end && is(at_, "else")) {
            ++at_;
            readStatement(end);
        }
    } else if (is(at_, "do")) {
        ++at_;
        readStatement(end);
        if (at_ < end && is(at_, "while")) readBracketed(end);
        if (at_ < end && is(at_, ";")) ++at_;
    } else if (is(at_, "else") || (is(at_, "try") && is(at_ + 1, "{")) ||
               (is(at_, "catch") && is(at_ + 1, "{"))) {
        ++at_;
        readStatement(end);
    } else {
        return false;
    }
    return true;
}

/// A word and the parentheses behind it, where the code stops.
void SyntaxReader::readBracketed(std::size_t end) {
    const std::size_t first = at_++;
    if (at_ >= end || !is(at_, "(")) return statement(first, at_);
    const std::size_t close = std::min(closing(at_), end);
    ++at_;
    statement(first, std::min(close + 1, end));
    readExpression(close);
    at_ = is(close, ")") ? std::min(close + 1, end) : close;
}

void SyntaxReader::readFor(std::size_t end) {
    const std::size_t open = at_ + 1;
    if (open >= end || !is(open, "(")) {
        ++at_;
        return;
    }
    const int scope = openScope(Scope::Kind::block, {beginOf(at_), endOfText()}, kNoIndex);
    const std::size_t close = std::min(closing(open), end);
    readForHead(open, close);
    at_ = is(close, ")") ? std::min(close + 1, end) : close;
    readStatement(end);
    syntax_.scopes[static_cast<std::size_t>(scope)].range.end = endOf(at_ - 1);
    closeScope();
}

/// Each part of the head is a place where the code stops, also when it has a line of its own.
void SyntaxReader::readForHead(std::size_t open, std::size_t close) {
    at_ = open + 1;
    for (int part = 0; at_ < close; ++part) {
        std::size_t behind = endOfStatement(at_, close);
        if (part == 0 && isLocalDeclaration(at_, close)) {
            readSimple(close);
            continue;
        }
        if (part == 2) behind = close;
        while (at_ < behind) {
            std::size_t comma = at_;
            while (comma < behind && (part != 2 || !is(comma, ",")))
                comma = std::min(past(comma), behind);
            statement(at_, comma);
            readExpression(comma);
            at_ = std::min(comma + (comma < behind ? 1 : 0), behind);
        }
        at_ = std::min(behind + 1, close);
    }
}

void SyntaxReader::readSwitch(std::size_t end) {
    readBracketed(end);
    if (at_ >= end || !is(at_, "{")) return;
    const std::size_t close = std::min(closing(at_), end), behind = std::min(past(at_), end);
    openScope(Scope::Kind::block, rangeOf(at_, behind), kNoIndex);
    for (++at_; at_ < close;) {
        const std::size_t before = at_;
        if (is(at_, "case")) {
            std::size_t colon = ++at_;
            while (colon < close && !is(colon, ":") && !is(colon, ";"))
                colon = std::min(past(colon), close);
            readExpression(colon);
            at_ = std::min(colon + 1, close);
        } else if (is(at_, "default")) {
            at_ = std::min(at_ + (is(at_ + 1, ":") ? 2u : 1u), close);
        } else {
            readStatement(close);
        }
        if (at_ == before) ++at_;
    }
    closeScope();
    at_ = behind;
}

bool SyntaxReader::isLocalDeclaration(std::size_t i, std::size_t end) const {
    const std::size_t name = behindType(i);
    if (name == i || name >= end || !isName(name)) return false;
    const std::size_t behind = name + 1;
    return behind >= end || is(behind, "=") || is(behind, ";") || is(behind, ",") ||
           is(behind, "(") || is(behind, "}") || breaksStatement(behind);
}

/// A declaration, an expression, or one of the words that leave something.
void SyntaxReader::readSimple(std::size_t end) {
    const std::size_t first = at_;
    if (isLocalDeclaration(at_, end)) {
        const std::size_t name = behindType(at_);
        useTypes(at_, name);
        at_ = name;
        Head head;
        head.begin = first;
        readVariables(Kind::local, head, rangeOf(first, name), end);
        return statement(first, at_);
    }
    if (is(at_, "return") || is(at_, "break") || is(at_, "continue")) ++at_;
    const std::size_t behind = std::max(endOfStatement(at_, end), at_);
    statement(first, std::max(std::min(behind + (is(behind, ";") ? 1 : 0), end), first + 1));
    readExpression(behind);
    if (at_ < end && is(at_, ";")) ++at_;
}

bool SyntaxReader::beginsControl(std::size_t i) const {
    static constexpr std::string_view kWords[] = {"if",     "for",   "while",    "do",   "switch",
                                                  "return", "break", "continue", "else", "case",
                                                  "class",  "enum",  "interface"};
    const ScriptToken& found = token(i);
    return found.isWord() && found.reserved &&
           std::find(std::begin(kWords), std::end(kWords), found.text) != std::end(kWords);
}

/// A statement that is just being written ends where the next one clearly begins.
bool SyntaxReader::breaksStatement(std::size_t i) const {
    if (beginsControl(i)) return true;
    const ScriptToken& found = token(i);
    if ((found.isWord() || found.is("~")) && beginsLine(i) && beginsHead(i)) return true;
    if (!found.isWord() || !found.reserved) return false;
    return isBuiltInType(found.text) && beginsLine(i) && behindType(i) > i && isName(behindType(i));
}

/// The ";" that closes what begins at `i`, or the first token that cannot belong to it.
std::size_t SyntaxReader::endOfStatement(std::size_t i, std::size_t end) const {
    if (i >= end) return end;
    const std::size_t last = is(i, ";") || is(i, "}") ? i : stops_[past(i)];
    return std::min(last, end);
}

/// For each token the next one of its own level that ends a statement, from behind, so that each is
/// looked at once.
void SyntaxReader::findStops() {
    stops_.assign(tokens_.size() + 1, tokens_.size());
    for (std::size_t i = tokens_.size(); i-- > 0;)
        stops_[i] = is(i, ";") || is(i, "}") || breaksStatement(i) ? i : stops_[past(i)];
}

}  // namespace korvant
