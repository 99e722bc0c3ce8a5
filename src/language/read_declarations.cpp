// Everything outside of code.
#include <algorithm>
#include <iterator>

#include "language/syntax_reader.h"

namespace korvant {

void SyntaxReader::readDeclarations(std::size_t end, int owner) {
    while (at_ < end) {
        const std::size_t before = at_;
        readDeclaration(end, owner);
        if (at_ == before) skipOne(end);
    }
    at_ = std::max(at_, std::min(end, tokens_.size()));
}

/// What nothing begins with; a bracket with all that it holds.
void SyntaxReader::skipOne(std::size_t end) {
    at_ = std::min(past(at_), end);
}

void SyntaxReader::readDeclaration(std::size_t end, int owner) {
    if (is(at_, "#")) return skipDirective();
    if (is(at_, ";") || is(at_, "}")) {
        ++at_;
        return;
    }
    const Head head = readHead(end);
    if (at_ >= end || ++depth_ > kDeepest) {
        at_ = std::min(at_, end);
    } else if (!readKeyword(head, end)) {
        readTyped(head, end, owner);
    }
    --depth_;
}

/// A line that the compiler does not get to see.
void SyntaxReader::skipDirective() {
    const auto lineEnd = text_.find('\n', beginOf(at_));
    while (at_ < tokens_.size() && beginOf(at_) < lineEnd) ++at_;
}

SyntaxReader::Head SyntaxReader::readHead(std::size_t end) {
    Head head;
    head.begin = at_;
    for (; at_ < end; ++at_) {
        if (is(at_, "private"))
            head.isPrivate = true;
        else if (is(at_, "protected"))
            head.isProtected = true;
        else if (is(at_, "mixin"))
            head.mixin = true;
        else if (!is(at_, "shared") && !is(at_, "external") && !is(at_, "abstract") &&
                 !is(at_, "final"))
            break;
        // A type may have the name of one of these words.
        else if (!token(at_ + 1).isWord())
            break;
    }
    return head;
}

bool SyntaxReader::readKeyword(const Head& head, std::size_t end) {
    if (is(at_, "namespace")) {
        readNamespace(head, end);
    } else if (is(at_, "class")) {
        readClass(head, end, head.mixin ? Kind::mixinType : Kind::classType);
    } else if (is(at_, "interface")) {
        readClass(head, end, Kind::interfaceType);
    } else if (is(at_, "enum")) {
        readEnum(head, end);
    } else if (is(at_, "typedef")) {
        readTypeAlias(head, end);
    } else if (is(at_, "import") || is(at_, "funcdef")) {
        const Kind kind = is(at_, "import") ? Kind::function : Kind::functionType;
        ++at_;
        const std::size_t type = at_;
        at_ = behindType(at_);
        const std::size_t behind = is(at_, "&") ? at_ + 1 : at_;
        useTypes(type, behind);
        at_ = behind;
        if (isName(at_)) readFunction(kind, at_, head, rangeOf(type, behind), end);
        while (at_ < end && !is(at_, ";") && !beginsLine(at_)) ++at_;
    } else {
        return false;
    }
    return true;
}

void SyntaxReader::readNamespace(const Head& head, std::size_t end) {
    const int outer = scope_;
    std::vector<int> names;
    for (++at_; at_ < end && (isName(at_) || is(at_, "::")); ++at_) {
        if (!isName(at_)) continue;
        names.push_back(declare(Kind::nameSpace, at_, head.begin));
        openScope(Scope::Kind::nameSpace, {endOf(at_), endOfText()}, names.back());
    }
    if (!names.empty() && is(at_, "{")) {
        const std::size_t close = std::min(closing(at_), end);
        const std::size_t behind = std::min(past(at_), end);
        const ByteRange body = rangeOf(at_, behind);
        for (const int name : names) {
            made(name).body = body;
            made(name).whole.end = body.end;
            syntax_.scopes[static_cast<std::size_t>(made(name).inner)].range.end = body.end;
        }
        ++at_;
        readDeclarations(close, kNoIndex);
        at_ = behind;
    } else {
        for (const int name : names)
            syntax_.scopes[static_cast<std::size_t>(made(name).inner)].range.end = beginOf(at_);
    }
    scope_ = outer;
}

void SyntaxReader::readClass(const Head& head, std::size_t end, Kind kind) {
    if (!isName(++at_)) return;
    const int type = declare(kind, at_++, head.begin);
    const auto goesOn = [this] {
        if (is(at_, ":") || is(at_, ",") || is(at_, "::")) return true;
        // The next line is that of another declaration while the bases are being written.
        const bool listed = is(at_ - 1, ":") || is(at_ - 1, ",") || is(at_ - 1, "::");
        const bool anew = beginsLine(at_) && (!listed || nameOfHead(at_) > at_);
        return isName(at_) && !anew;
    };
    while (at_ < end && goesOn()) {
        if (isName(at_)) {
            if (!is(at_ + 1, "::")) made(type).bases.push_back(token(at_).text);
            use(at_, is(at_ + 1, "::") ? Role::qualifies : Role::type);
        }
        ++at_;
    }
    if (!is(at_, "{")) return;
    const std::size_t close = std::min(closing(at_), end), behind = std::min(past(at_), end);
    made(type).body = rangeOf(at_, behind);
    made(type).whole.end = made(type).body.end;
    openScope(Scope::Kind::type, made(type).body, type);
    ++at_;
    readDeclarations(close, type);
    closeScope();
    at_ = behind;
}

void SyntaxReader::readEnum(const Head& head, std::size_t end) {
    if (!isName(++at_)) return;
    const int type = declare(Kind::enumType, at_++, head.begin);
    if (is(at_, ":")) {
        made(type).type = rangeOf(at_ + 1, at_ + 2);
        at_ += 2;
    }
    if (!is(at_, "{")) return;
    const std::size_t close = std::min(closing(at_), end), whole = std::min(past(at_), end);
    made(type).body = rangeOf(at_, whole);
    made(type).whole.end = made(type).body.end;
    openScope(Scope::Kind::type, made(type).body, type);
    for (++at_; at_ < close;) {
        if (!isName(at_)) {
            ++at_;
            continue;
        }
        const int value = declare(Kind::enumValue, at_, at_);
        std::size_t behind = ++at_;
        while (behind < close && !is(behind, ",")) behind = std::min(past(behind), close);
        readExpression(behind);
        made(value).whole.end = endOf(behind - 1);
    }
    closeScope();
    at_ = whole;
}

void SyntaxReader::readTypeAlias(const Head& head, std::size_t end) {
    const std::size_t type = ++at_;
    at_ = std::min(behindType(at_), end);
    useTypes(type, at_);
    if (!isName(at_)) return;
    const int alias = declare(Kind::typeAlias, at_++, head.begin);
    made(alias).type = rangeOf(type, at_ - 1);
}

void SyntaxReader::apply(const Head& head, int declaration) {
    made(declaration).isPrivate = head.isPrivate;
    made(declaration).isProtected = head.isProtected;
}

/// A function or variable; of a class also what has no type before its name.
bool SyntaxReader::readTyped(const Head& head, std::size_t end, int owner) {
    if (owner != kNoIndex && is(at_, "~") && isName(at_ + 1)) {
        readFunction(Kind::destructor, at_ + 1, head, {}, end);
        return true;
    }
    if (owner != kNoIndex && isName(at_) && is(at_ + 1, "(")) {
        readFunction(Kind::constructor, at_, head, {}, end);
        return true;
    }
    const std::size_t type = at_;
    std::size_t name = behindType(type);
    if (name == type) return false;
    if (is(name, "&")) ++name;
    const bool ofNextLine = isName(name) && beginsLine(name) && nameOfHead(name) > name;
    if (!isName(name) || ofNextLine) {
        useTypes(type, name);  // a type that is just being written
        at_ = name;
        return true;
    }
    useTypes(type, name);
    const ByteRange typeRange = rangeOf(type, name);
    at_ = name;
    if (is(name + 1, "(") && looksLikeFunction(name + 1, type, end, owner)) {
        readFunction(owner == kNoIndex ? Kind::function : Kind::method, name, head, typeRange, end);
    } else if (is(name + 1, "{")) {
        readProperty(head, name, typeRange);
    } else {
        readVariables(owner == kNoIndex ? Kind::globalVariable : Kind::memberVariable, head,
                      typeRange, end);
    }
    return true;
}

/// "T name(" may begin a function or a variable that is constructed.
bool SyntaxReader::looksLikeFunction(std::size_t open, std::size_t type, std::size_t end,
                                     int owner) const {
    const std::size_t behind = past(open);
    if (is(behind, "{") || token(behind).isWord() || behind >= end) return true;
    if (is(type, "void") || is(behind - 2, "(")) return true;
    if (owner != kNoIndex) return true;
    const std::size_t first = behindType(open + 1);
    // "f(double)" or "f(const T)"; a value would be "f(double(x))".
    const bool typed = isBuiltInType(token(open + 1).text) || is(open + 1, "const");
    if (typed && (is(first, ")") || is(first, ","))) return true;
    return first > open + 1 && (isName(first) || is(first, "&"));
}

int SyntaxReader::readFunction(Kind kind, std::size_t name, const Head& head, ByteRange type,
                               std::size_t end) {
    const int function = declare(kind, name, head.begin);
    apply(head, function);
    made(function).type = type;
    at_ = name + 1;
    if (!is(at_, "(")) return function;
    openScope(Scope::Kind::function, {beginOf(at_), endOfText()}, function);
    made(function).parameters = rangeOf(at_, std::min(past(at_), end));
    readParameters(at_);
    readBodyOf(function, end);
    closeScope();
    return function;
}

/// What stands behind the parameters.
void SyntaxReader::readBodyOf(int function, std::size_t end) {
    while (at_ < end && token(at_).isWord() && !beginsLine(at_) && !is(at_, "from")) ++at_;
    // Such words may stand in a line of their own as well.
    while (at_ < end && token(at_).isWord() && is(at_ + 1, "{")) ++at_;
    if (is(at_, "{") && at_ < end) {
        const std::size_t close = std::min(closing(at_), end), behind = std::min(past(at_), end);
        made(function).body = rangeOf(at_, behind);
        ++at_;
        readStatements(close);
        // The end of a body is where a function without statements stops.
        statement(close, behind);
        at_ = behind;
    }
    const std::size_t last = at_ > 0 ? endOf(at_ - 1) : 0;
    made(function).whole.end = last;
    syntax_.scopes[static_cast<std::size_t>(scope_)].range.end = last;
}

void SyntaxReader::readParameters(std::size_t open) {
    const std::size_t close = std::min(closing(open), tokens_.size());
    at_ = open + 1;
    while (at_ < close) {
        std::size_t behind = at_;
        int angles = 0;
        for (; behind < close; behind = std::min(past(behind), close)) {
            if (is(behind, ",") && angles <= 0) break;
            angles += is(behind, "<") ? 1 : 0;
            if (is(behind, ">") || is(behind, ">>") || is(behind, "="))
                angles = is(behind, "=") ? 0 : angles - static_cast<int>(token(behind).text.size());
        }
        readParameter(behind);
        at_ = behind + 1;
    }
    at_ = is(close, ")") ? close + 1 : close;
}

void SyntaxReader::readParameter(std::size_t end) {
    const std::size_t first = at_;
    std::size_t i = behindType(first);
    // A nameless function's parameters need no type.
    const bool untyped = i == first + 1 && isName(first) && (i == end || is(i, "="));
    const bool inLambda =
        made(syntax_.scopes[static_cast<std::size_t>(scope_)].owner).kind == Kind::lambda;
    if (untyped && inLambda) i = first;
    useTypes(first, std::min(i, end));
    while (i < end && (is(i, "&") || is(i, "in") || is(i, "out") || is(i, "inout") || is(i, "+")))
        ++i;
    const std::size_t behindWhole = i;
    if (i < end && isName(i)) {
        const int parameter = declare(Kind::parameter, i, first);
        made(parameter).type = rangeOf(first, behindWhole);
        made(parameter).whole.end = end > first ? endOf(end - 1) : beginOf(first);
        made(parameter).setFrom = made(parameter).nameRange.end;
        ++i;
    }
    at_ = i;
    readExpression(end);
}

void SyntaxReader::readProperty(const Head& head, std::size_t name, ByteRange type) {
    const int property = declare(Kind::property, name, head.begin);
    apply(head, property);
    made(property).type = type;
    const std::size_t open = name + 1;
    const std::size_t close = std::min(closing(open), tokens_.size());
    made(property).body = rangeOf(open, past(open));
    made(property).whole.end = made(property).body.end;
    for (at_ = open + 1; at_ < close;) {
        const bool accessor = (is(at_, "get") || is(at_, "set"));
        if (!accessor) {
            skipOne(close);
            continue;
        }
        const int function = declareNameless(Kind::accessor, at_);
        made(function).name = token(at_).text;
        made(function).nameRange = rangeOf(at_, at_ + 1);
        openScope(Scope::Kind::function, {endOf(at_), endOfText()}, function);
        ++at_;
        readBodyOf(function, close);
        closeScope();
    }
    at_ = past(open);
}

/// "name = value, name(arguments), name;" behind their type.
void SyntaxReader::readVariables(Kind kind, const Head& head, ByteRange type, std::size_t end) {
    std::vector<int> list;
    const std::size_t statementEnd = endOfStatement(at_, end);
    while (at_ < end && isName(at_)) {
        const int variable = declare(kind, at_, list.empty() ? head.begin : at_);
        apply(head, variable);
        made(variable).type = type;
        list.push_back(variable);
        ++at_;
        readInitialiser(statementEnd);
        made(variable).whole.end = endOf(at_ - 1);
        made(variable).setFrom = endOf(at_ - 1);
        if (!is(at_, ",") || at_ >= end) break;
        ++at_;
    }
    if (at_ < end && is(at_, ";")) {
        if (!list.empty()) made(list.back()).whole.end = endOf(at_);
        ++at_;
    }
}

/// Up to the comma or the end of the variable's statement.
void SyntaxReader::readInitialiser(std::size_t end) {
    std::size_t behind = at_;
    if (!is(behind, "=") && !is(behind, "(")) return;
    while (behind < end && !is(behind, ",")) {
        const std::size_t arguments = is(behind, "<") ? behindArguments(behind) : behind;
        if (arguments > behind && is(arguments, "("))
            behind = arguments;
        else
            behind = std::min(past(behind), end);
    }
    readExpression(behind);
}

}  // namespace korvant
