#include "language/stripped_text.h"

#include <algorithm>

#include "language/tokens.h"

namespace korvant {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

bool isVoid(std::string_view type) {
    return type.empty() || type == "void";
}

/// Functions with a body whose result the compiler would miss.
bool returnsValue(const Declaration& function, std::string_view text) {
    if (function.kind == DeclarationKind::constructor ||
        function.kind == DeclarationKind::destructor || function.type.empty())
        return false;
    return !isVoid(text.substr(function.type.begin, function.type.size()));
}

/// The names of the parameters, as the arguments of a call of the function itself.
std::string ownArguments(const Declaration& function, const ScopeIndex& index) {
    std::string list;
    if (function.inner == kNoIndex) return list;
    for (const int i : index.declaredIn(function.inner)) {
        const Declaration& parameter = index.declarations()[at(i)];
        if (parameter.kind != DeclarationKind::parameter) continue;
        list += (list.empty() ? "" : ", ") + std::string(parameter.name);
    }
    return list;
}

}  // namespace

std::string withoutAccess(const ScopeIndex& index) {
    std::string result(index.document().text());
    for (const ScriptToken& token : index.tokens())
        if (token.is("private") || token.is("protected"))
            result.replace(static_cast<std::size_t>(token.position), token.text.size(),
                           token.text.size(), ' ');
    return result;
}

namespace {

/// "super(...);" of a constructor stays: without it the class may not build.
std::string callOfSuper(std::string_view body) {
    const std::vector<ScriptToken> tokens = scriptTokens(body);
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
        if (!tokens[i].is("super") || !tokens[i + 1].is("(")) continue;
        int open = 0;
        for (std::size_t j = i + 1; j < tokens.size(); ++j) {
            if (tokens[j].is("(")) ++open;
            if (tokens[j].is(")") && --open == 0)
                return std::string(body.substr(
                           static_cast<std::size_t>(tokens[i].position),
                           static_cast<std::size_t>(tokens[j].end() - tokens[i].position))) +
                       ";";
        }
    }
    return {};
}

std::string bodyInstead(const Declaration& function, const ScopeIndex& index) {
    const std::string_view text = index.document().text();
    if (returnsValue(function, text))
        return "{return " + std::string(function.name) + "(" + ownArguments(function, index) +
               ");}";
    if (function.kind != DeclarationKind::constructor) return "{}";
    return "{" + callOfSuper(text.substr(function.body.begin, function.body.size())) + "}";
}

bool holdsOneOf(ByteRange range, const TextDocument& text, const std::vector<int>& rows) {
    const auto first = static_cast<int>(text.lineOf(range.begin)) + 1;
    const auto last = static_cast<int>(text.lineOf(range.end)) + 1;
    return rows.empty() || std::any_of(rows.begin(), rows.end(),
                                       [&](int row) { return first <= row && row <= last; });
}

bool hasBody(const Declaration& function) {
    const bool named = function.kind == DeclarationKind::function ||
                       function.kind == DeclarationKind::method ||
                       function.kind == DeclarationKind::constructor ||
                       function.kind == DeclarationKind::destructor;
    return named && !function.body.empty();
}

}  // namespace

namespace {

/// A long value of a variable whose type is written: nothing depends on it. Empty for others.
ByteRange longValueOf(const Declaration& one, const ScopeIndex& index) {
    constexpr std::size_t kLong = 200;
    const std::string_view text = index.document().text();
    const ByteRange value{one.nameRange.end, one.setFrom};
    const bool variable =
        one.kind == DeclarationKind::globalVariable || one.kind == DeclarationKind::memberVariable;
    if (!variable || one.setFrom <= value.begin + kLong) return {};
    const std::size_t first = text.find_first_not_of(" \t\r\n", value.begin);
    const bool assigned = first < value.end && text[first] == '=';
    const bool deduced = index.oneLine(one.type).find("auto") != std::string::npos;
    return assigned && !deduced ? value : ByteRange{};
}

}  // namespace

std::string withoutBodies(std::string_view text, const ScopeIndex& index,
                          const std::vector<int>& rows, Lines lines) {
    std::string result;
    result.reserve(text.size());
    std::size_t done = 0;
    for (const Declaration& function : index.declarations()) {
        // What has been blanked has none.
        const bool body = hasBody(function) && text[function.body.begin] == '{';
        const ByteRange range = body ? function.body : longValueOf(function, index);
        if (range.empty() || range.begin < done || !holdsOneOf(range, index.document(), rows))
            continue;
        result += text.substr(done, range.begin - done);
        if (body) result += bodyInstead(function, index);
        const std::string_view gone = text.substr(range.begin, range.size());
        if (lines == Lines::keep)
            result.append(static_cast<std::size_t>(std::count(gone.begin(), gone.end(), '\n')),
                          '\n');
        done = range.end;
    }
    return result.append(text.substr(done));
}

namespace {

bool standsOutside(const Declaration& one, const ScopeIndex& index) {
    const Scope::Kind around = index.scopes()[at(one.scope)].kind;
    return around != Scope::Kind::function && around != Scope::Kind::block;
}

/// Spaces in place of everything but line ends.
void blank(std::string& text, ByteRange range) {
    for (std::size_t i = range.begin; i < std::min(range.end, text.size()); ++i)
        if (text[i] != '\n' && text[i] != '\r') text[i] = ' ';
}

/// A class or a function that has no body where it must have one.
bool isHalfWritten(const Declaration& one, const ScopeIndex& index) {
    if (!one.body.empty()) return false;
    if (one.kind == DeclarationKind::classType || one.kind == DeclarationKind::mixinType ||
        one.kind == DeclarationKind::interfaceType || one.kind == DeclarationKind::enumType)
        return true;
    const int owner = index.scopes()[at(one.scope)].owner;
    const bool promised =
        owner != kNoIndex && index.declarations()[at(owner)].kind == DeclarationKind::interfaceType;
    return isCallable(one.kind) && !promised;
}

}  // namespace

std::string declarationsAlone(const std::string& text, const ScopeIndex& index) {
    std::string kept = text;
    blank(kept, {0, kept.size()});
    const auto keep = [&](ByteRange range) {
        range.end = std::min(range.end, text.size());
        if (range.begin < range.end)
            kept.replace(range.begin, range.size(), text, range.begin, range.size());
    };
    for (const Declaration& one : index.declarations()) {
        if (!standsOutside(one, index) || one.whole.empty() || isHalfWritten(one, index)) continue;
        const bool container = one.kind == DeclarationKind::nameSpace ||
                               (isType(one.kind) && one.kind != DeclarationKind::enumType);
        if (container && !one.body.empty()) {
            keep({one.whole.begin, one.body.begin + 1});
            keep({one.body.end - 1, one.body.end});
            continue;
        }
        keep(one.whole);
        const bool ends = (isVariable(one.kind) && one.kind != DeclarationKind::property) ||
                          one.kind == DeclarationKind::functionType ||
                          one.kind == DeclarationKind::typeAlias;
        if (!ends || one.whole.end >= text.size() || text[one.whole.end - 1] == ';') continue;
        const std::size_t next = text.find_first_not_of(" \t\r\n", one.whole.end);
        if (next != std::string::npos && (text[next] == ',' || text[next] == ';'))
            kept[next] = text[next];
        else if (static_cast<unsigned char>(text[one.whole.end]) <= ' ')
            kept[one.whole.end] = ';';
    }
    return kept;
}

namespace {

/// What a message is about: its place, or its line where what was compiled differs in front of it.
ByteRange placeOf(const CompilerPlace& error, const TextDocument& text,
                  const TextDocument& compiled) {
    const auto line = static_cast<std::uint32_t>(std::max(0, error.row - 1));
    const ByteRange whole = text.lineRange(line);
    const auto column = static_cast<std::size_t>(std::max(0, error.column - 1));
    if (text.lineText(line).substr(0, column + 1) != compiled.lineText(line).substr(0, column + 1))
        return whole;
    const std::size_t offset = std::min(whole.begin + column, whole.end);
    return {offset, offset};
}

}  // namespace

void blankPlaces(std::string& text, const ScopeIndex& index,
                 const std::vector<CompilerPlace>& errors, const TextDocument& compiled) {
    const TextDocument document(text);
    for (std::size_t i = 0; i < errors.size(); ++i) {
        const ByteRange place = placeOf(errors[i], document, compiled);
        ByteRange inner = document.lineRange(document.lineOf(place.begin));
        std::size_t smallest = text.size() + 1;
        bool holds = false;
        for (const Declaration& one : index.declarations()) {
            if (!standsOutside(one, index) || one.whole.begin > place.end ||
                one.whole.end < place.begin || one.whole.size() >= smallest)
                continue;
            inner = one.whole;
            smallest = inner.size();
            holds = isType(one.kind) || one.kind == DeclarationKind::nameSpace;
        }
        if (i == 0 || !holds) blank(text, inner);
    }
}

}  // namespace korvant
