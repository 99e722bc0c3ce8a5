#include "language/script_colours.h"

#include "language/completion.h"

namespace korvant {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

NameColour colourOf(DeclarationKind kind) {
    switch (kind) {
        case DeclarationKind::nameSpace:
            return NameColour::nameSpace;
        case DeclarationKind::interfaceType:
            return NameColour::interfaceType;
        case DeclarationKind::enumType:
            return NameColour::enumType;
        case DeclarationKind::enumValue:
            return NameColour::enumMember;
        case DeclarationKind::classType:
        case DeclarationKind::mixinType:
        case DeclarationKind::functionType:
        case DeclarationKind::typeAlias:
            return NameColour::classType;
        case DeclarationKind::function:
        case DeclarationKind::lambda:
            return NameColour::function;
        case DeclarationKind::method:
        case DeclarationKind::constructor:
        case DeclarationKind::destructor:
        case DeclarationKind::accessor:
            return NameColour::method;
        case DeclarationKind::memberVariable:
        case DeclarationKind::property:
            return NameColour::property;
        case DeclarationKind::parameter:
            return NameColour::parameter;
        default:
            return NameColour::variable;
    }
}

/// False for what is not known.
bool colour(Meanings& meanings, const NameUse& use, ColouredName& name) {
    const Meaning meaning = meanings.of(use);
    const ScopeIndex& index = meanings.index();
    if (!meaning.declarations.empty()) {
        const Declaration& one = index.declarations()[at(meaning.declaration())];
        name.colour = colourOf(one.kind);
        // A property that is made of accessors.
        if (one.kind == DeclarationKind::method && one.name != meanings.nameOf(use))
            name.colour = NameColour::property;
        name.readOnly = one.kind == DeclarationKind::enumValue ||
                        (isVariable(one.kind) && index.oneLine(one.type).starts_with("const "));
        return true;
    }
    if (meaning.function != nullptr)
        name.colour = meaning.owner.empty() ? NameColour::function : NameColour::method;
    else if (meaning.type != nullptr)
        name.colour = (meaning.type->GetFlags() & asOBJ_ENUM) != 0 ? NameColour::enumType
                                                                   : NameColour::classType;
    else if (meaning.property)
        name.colour = meaning.owner.empty() ? NameColour::variable : NameColour::property;
    return meaning.known();
}

/// Of a class the constructor that takes so many arguments; functions are themselves.
int calledWith(Meanings& meanings, int declaration, std::size_t bracket, std::size_t arguments) {
    const auto& declarations = meanings.index().declarations();
    if (!isType(declarations[at(declaration)].kind)) return declaration;
    for (const int i : meanings.functionsCalledAt(bracket))
        if (parameterTypes(meanings.index(), i).size() >= arguments) return i;
    return declaration;
}

/// The names of the parameters of what is called; empty ones where it has none.
std::vector<std::string> parameterNames(Meanings& meanings, const Meaning& meaning,
                                        std::size_t bracket, std::size_t arguments) {
    std::vector<std::string> names;
    const ScopeIndex& index = meanings.index();
    if (meaning.function != nullptr) {
        for (asUINT i = 0; i < meaning.function->GetParamCount(); ++i) {
            int type = 0;
            const char* name = nullptr;
            meaning.function->GetParam(i, &type, nullptr, &name);
            names.emplace_back(name == nullptr ? "" : name);
        }
        return names;
    }
    if (meaning.declarations.empty()) return names;
    const Declaration& one =
        index.declarations()[at(calledWith(meanings, meaning.declaration(), bracket, arguments))];
    if (!isCallable(one.kind) || one.inner == kNoIndex) return names;
    for (const int i : index.declaredIn(one.inner))
        if (index.declarations()[at(i)].kind == DeclarationKind::parameter)
            names.emplace_back(index.declarations()[at(i)].name);
    return names;
}

/// How many there are behind an opening bracket.
std::size_t argumentsAt(const std::vector<ScriptToken>& tokens, std::size_t bracket) {
    std::size_t count = 1;
    int depth = 0;
    for (std::size_t i = bracket; i < tokens.size() && !tokens[i].is(";"); ++i) {
        if (tokens[i].is("(") || tokens[i].is("[") || tokens[i].is("{")) ++depth;
        if (tokens[i].is(")") || tokens[i].is("]") || tokens[i].is("}")) --depth;
        if (depth == 0) break;
        if (depth == 1 && tokens[i].is(",")) ++count;
    }
    return count;
}

void addArguments(Meanings& meanings, const NameUse& use, std::vector<InlayHint>& hints) {
    const auto& tokens = meanings.index().tokens();
    std::size_t i = meanings.index().tokenAt(use.range().end);
    if (i >= tokens.size() || !tokens[i].is("(")) return;
    std::vector<std::string> names;
    const std::size_t bracket = i;
    bool asked = false;
    int depth = 0;
    std::size_t argument = 0;
    for (; i + 1 < tokens.size(); ++i) {
        if (tokens[i].is("(") || tokens[i].is("[") || tokens[i].is("{")) ++depth;
        if (tokens[i].is(")") || tokens[i].is("]") || tokens[i].is("}")) --depth;
        if (depth == 0 || tokens[i].is(";")) return;
        if (depth == 1 && tokens[i].is(",")) ++argument;
        const bool begins = depth == 1 && (tokens[i].is("(") || tokens[i].is(","));
        const ScriptToken& next = tokens[i + 1];
        const bool literal = next.kind == ScriptToken::Kind::number ||
                             next.kind == ScriptToken::Kind::text || next.is("true") ||
                             next.is("false") || next.is("null");
        if (!begins || !literal) continue;
        if (!asked)
            names =
                parameterNames(meanings, meanings.of(use), bracket, argumentsAt(tokens, bracket));
        asked = true;
        if (argument < names.size() && !names[argument].empty())
            hints.push_back(
                {static_cast<std::size_t>(next.position), names[argument] + ":", false});
    }
}

}  // namespace

std::vector<ColouredName> colouredNames(Meanings& meanings, ByteRange range) {
    std::vector<ColouredName> names;
    for (const NameUse& use : meanings.index().uses()) {
        if (use.range().end <= range.begin || use.begin >= range.end) continue;
        ColouredName name;
        name.range = use.range();
        name.declares = use.role == NameUse::Role::declares;
        if (colour(meanings, use, name)) names.push_back(name);
    }
    return names;
}

std::vector<InlayHint> hintsIn(Meanings& meanings, ByteRange range) {
    std::vector<InlayHint> hints;
    const ScopeIndex& index = meanings.index();
    for (const NameUse& use : index.uses()) {
        if (use.range().end <= range.begin || use.begin >= range.end) continue;
        if (use.role == NameUse::Role::calls) addArguments(meanings, use, hints);
        if (use.role != NameUse::Role::declares || use.declaration == kNoIndex) continue;
        const Declaration& one = index.declarations()[at(use.declaration)];
        if (!isVariable(one.kind) || index.oneLine(one.type).find("auto") == std::string::npos)
            continue;
        const std::string type = meanings.oracle().typeOfVariable(use.declaration);
        if (!type.empty()) hints.push_back({use.range().end, ": " + type, true});
    }
    return hints;
}

}  // namespace korvant
