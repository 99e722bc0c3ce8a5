#include "language/script_help.h"

#include <algorithm>

#include "language/completion.h"

namespace korvant {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

std::string libraryDeclaration(const asIScriptFunction& function) {
    return function.GetDeclaration(true, false, true);
}

/// "= 5" behind the name, up to the end of its part of the statement.
std::string initialiserOf(const ScopeIndex& index, const Declaration& variable) {
    const std::string_view text = index.document().text();
    std::size_t begin = text.find_first_not_of(" \t\r\n", variable.nameRange.end);
    if (begin == std::string_view::npos || text[begin] != '=') return {};
    const std::size_t end = text.find_first_of(";,\n}", begin);
    return index.oneLine({begin + 1, std::min(end, text.size())});
}

std::string enumValueOf(const asITypeInfo& type, std::string_view name) {
    for (asUINT i = 0; i < type.GetEnumValueCount(); ++i) {
        int value = 0;
        const char* const known = type.GetEnumValueByIndex(i, &value);
        if (known != nullptr && known == name) return std::to_string(value);
    }
    return {};
}

std::optional<HoverText> libraryHover(const Meaning& meaning, const Documentation& library,
                                      ByteRange range, std::string_view name) {
    if (meaning.function != nullptr)
        return HoverText{range, libraryDeclaration(*meaning.function),
                         library.of(*meaning.function).markdown()};
    if (meaning.type != nullptr) return HoverText{range, "type " + std::string(name), {}};
    if (meaning.property)
        return HoverText{
            range, (meaning.owner.empty() ? "" : meaning.owner + "::") + std::string(name), {}};
    return std::nullopt;
}

SignatureText signatureOf(std::string declaration, std::string documentation) {
    SignatureText text{std::move(declaration), std::move(documentation), {}};
    for (int i = 0;; ++i) {
        const ParameterPlace place = parameterPlace(text.label, i);
        if (place.end <= place.begin) break;
        text.parameters.push_back(
            {static_cast<std::size_t>(place.begin), static_cast<std::size_t>(place.end)});
    }
    return text;
}

void addMethods(const asITypeInfo& type, const std::string& name, const Documentation& library,
                Signatures& signatures) {
    for (asUINT i = 0; i < type.GetMethodCount(); ++i) {
        const asIScriptFunction* const method = type.GetMethodByIndex(i);
        if (method->GetName() == name)
            signatures.all.push_back(
                signatureOf(libraryDeclaration(*method), library.of(*method).markdown()));
    }
}

void addConstructors(const asITypeInfo& type, Signatures& signatures) {
    for (asUINT i = 0; i < type.GetFactoryCount(); ++i)
        signatures.all.push_back(signatureOf(libraryDeclaration(*type.GetFactoryByIndex(i)), {}));
    for (asUINT i = 0; i < type.GetBehaviourCount(); ++i) {
        asEBehaviours behaviour{};
        const asIScriptFunction* const function = type.GetBehaviourByIndex(i, &behaviour);
        if (behaviour == asBEHAVE_CONSTRUCT)
            signatures.all.push_back(signatureOf(libraryDeclaration(*function), {}));
    }
}

/// What of this text a call by these names may call: functions, constructors of a class, function
/// types behind handles, and call operators of objects.
void addDeclared(Meanings& meanings, const std::vector<int>& declarations, Signatures& signatures) {
    const ScopeIndex& index = meanings.index();
    const auto add = [&](int i) {
        signatures.all.push_back(signatureOf(headline(index, i), remarkAbove(index, i)));
    };
    for (const int i : declarations) {
        const Declaration& one = index.declarations()[at(i)];
        if (isCallable(one.kind)) {
            add(i);
        } else if (isType(one.kind)) {
            for (const int inner : index.declaredIn(one.inner))
                if (index.declarations()[at(inner)].kind == DeclarationKind::constructor)
                    add(inner);
            if (signatures.all.empty())
                signatures.all.push_back(signatureOf(std::string(one.name) + "()", {}));
        } else if (isVariable(one.kind)) {
            const int type =
                meanings.classNamed(meanings.oracle().typeOfVariable(i), one.nameRange.begin);
            if (type == kNoIndex) continue;
            if (index.declarations()[at(type)].kind == DeclarationKind::functionType) add(type);
            for (const int operation : index.membersOf(type, "opCall")) add(operation);
        }
    }
}

struct OpenCall {
    std::size_t bracket = 0;  ///< token; 0 for none
    std::size_t argument = 0;
    std::size_t first = 0;  ///< token that the argument begins with
};

/// The bracket that opens what closes at `i`; 0 where nothing does.
std::size_t openingOf(const std::vector<ScriptToken>& tokens, std::size_t i) {
    int open = 0;
    for (;; --i) {
        const ScriptToken& one = tokens[i];
        if (one.is(")") || one.is("]") || one.is("}")) ++open;
        if ((one.is("(") || one.is("[") || one.is("{")) && --open == 0) return i;
        if (i == 0) return 0;
    }
}

/// Whether a brace can stand in an argument: of a list of values, or of a nameless function.
bool inArgument(const std::vector<ScriptToken>& tokens, std::size_t brace) {
    if (brace == 0) return false;
    const ScriptToken& before = tokens[brace - 1];
    if (before.is("(") || before.is(",") || before.is("{") || before.is("=")) return true;
    const std::size_t open = before.is(")") ? openingOf(tokens, brace - 1) : 0;
    return open > 0 && tokens[open - 1].is("function");
}

/// The call whose parentheses are open at `offset`.
OpenCall openCallAt(const std::vector<ScriptToken>& tokens, std::size_t behind) {
    OpenCall call;
    call.first = behind;
    const auto inner = [&](std::size_t i) { return i > 0 ? tokens[i - 1] : ScriptToken(); };
    for (std::size_t i = behind; i-- > 0;) {
        const ScriptToken& token = tokens[i];
        if (token.is(")") || token.is("]") || token.is("}")) {
            const bool braces = token.is("}");
            i = openingOf(tokens, i);
            // Everything else in braces ends what stands before it.
            if (i == 0 || (braces && !inArgument(tokens, i))) return {};
        } else if (token.is(",")) {
            if (++call.argument == 1) call.first = i + 1;
        } else if (token.is(";")) {
            return {};
        } else if (token.is("(") || token.is("[") || token.is("{")) {
            const ScriptToken before = inner(i);
            if (token.is("{") && (before.is(")") || !inArgument(tokens, i))) return {};
            const bool called =
                before.isName() || before.is("super") || before.is(">") || before.is("]");
            if (token.is("(") && before.isWord() && !called) return {};
            if (call.argument == 0) call.first = i + 1;
            if (token.is("(") && called) {
                call.bracket = i;
                return call;
            }
            call = {};
            call.first = i + 1;
        }
    }
    return {};
}

/// The type that is constructed where a call has one in front of its bracket: "T name(", "T[](".
std::string constructedAt(Meanings& meanings, std::size_t bracket) {
    const auto& tokens = meanings.index().tokens();
    const ScopeIndex& index = meanings.index();
    const auto end = static_cast<std::size_t>(tokens[bracket - 1].end());
    if (tokens[bracket - 1].isName()) {
        const NameUse* const use =
            index.useAt(static_cast<std::size_t>(tokens[bracket - 1].position));
        const bool variable = use != nullptr && use->role == NameUse::Role::declares &&
                              isVariable(index.declarations()[at(use->declaration)].kind);
        return variable ? meanings.oracle().typeOfVariable(use->declaration) : std::string();
    }
    std::size_t first = bracket;
    int open = 0;
    while (first-- > 0) {
        const ScriptToken& token = tokens[first];
        if (token.is(">") || token.is("]")) ++open;
        if (token.is("<") || token.is("[")) --open;
        const bool part = open > 0 || token.isWord() || token.is("<") || token.is("[");
        if (!part || token.is(";") || token.is("return")) break;
    }
    const auto begin = static_cast<std::size_t>(tokens[first + 1].position);
    return begin < end ? index.oneLine({begin, end}) : std::string();
}

void addMembers(Meanings& meanings, const Documentation& library, std::size_t bracket,
                Signatures& signatures) {
    const auto& tokens = meanings.index().tokens();
    const std::string name(tokens[bracket - 1].text);
    const auto dot = static_cast<std::size_t>(tokens[bracket - 2].position);
    const Meanings::Owner owner = meanings.ownerBefore(dot);
    if (owner.type != kNoIndex)
        return addDeclared(meanings, meanings.index().membersOf(owner.type, name), signatures);
    asITypeInfo* const info = meanings.oracle().typeInfo(owner.name, dot);
    if (info != nullptr) addMethods(*info, name, library, signatures);
}

void addFunctions(Meanings& meanings, const Documentation& library, const ScriptToken& name,
                  Signatures& signatures) {
    const auto begin = static_cast<std::size_t>(name.position);
    const NameUse* const use = meanings.index().useAt(begin);
    if (use != nullptr && use->role == NameUse::Role::declares) return;
    addDeclared(meanings,
                use != nullptr ? meanings.index().meaningsOf(*use)
                               : meanings.index().meaningsOf(name.text, begin),
                signatures);
    if (!signatures.all.empty()) return;
    asIScriptEngine* const engine = meanings.engine();
    if (engine == nullptr) return;
    for (asUINT i = 0; i < engine->GetGlobalFunctionCount(); ++i) {
        const asIScriptFunction* const function = engine->GetGlobalFunctionByIndex(i);
        if (function->GetName() == name.text)
            signatures.all.push_back(
                signatureOf(libraryDeclaration(*function), library.of(*function).markdown()));
    }
    asITypeInfo* const type = engine->GetTypeInfoByName(std::string(name.text).c_str());
    if (type != nullptr) addConstructors(*type, signatures);
}

/// The name of a parameter of a label: the last word before a default value.
std::string_view nameOfParameter(std::string_view parameter) {
    std::string_view name;
    for (const ScriptToken& token : scriptTokens(parameter)) {
        if (token.is("=")) break;
        if (token.isName()) name = token.text;
    }
    return name;
}

/// The first signature that has the parameter, which an argument may name.
void chooseActive(const OpenCall& call, const std::vector<ScriptToken>& tokens,
                  Signatures& signatures) {
    signatures.parameter = call.argument;
    const bool labelled = call.first + 1 < tokens.size() && tokens[call.first].isName() &&
                          tokens[call.first + 1].is(":");
    for (std::size_t i = 0; i < signatures.all.size(); ++i) {
        const SignatureText& one = signatures.all[i];
        if (!labelled && one.parameters.size() <= call.argument) continue;
        signatures.active = i;
        for (std::size_t p = 0; labelled && p < one.parameters.size(); ++p) {
            const std::string_view text = std::string_view(one.label).substr(
                one.parameters[p].begin, one.parameters[p].size());
            if (nameOfParameter(text) != tokens[call.first].text) continue;
            signatures.parameter = p;
            return;
        }
        if (!labelled) return;
    }
    if (labelled) signatures.active = 0;
}

}  // namespace

namespace {

/// Whether `place` lies in a token that begins before it; at the end only of what is `open` there.
bool holds(const ScriptToken& token, std::size_t place, bool open) {
    const auto end = static_cast<std::size_t>(token.end());
    return place < end || (place == end && open);
}

bool inRemark(const ScopeIndex& index, std::size_t offset) {
    const ScriptToken* const remark = tokenBefore(index.remarks(), offset);
    // At the end of a remark of one line one still writes the remark.
    return remark != nullptr &&
           holds(*remark, offset, !remark->ended || remark->text.starts_with("//"));
}

}  // namespace

bool inRemarkOrText(const ScopeIndex& index, std::size_t offset) {
    if (inRemark(index, offset)) return true;
    const ScriptToken* const text = tokenBefore(index.tokens(), offset);
    return text != nullptr && text->kind == ScriptToken::Kind::text &&
           holds(*text, offset, !text->ended);
}

std::string constantValue(Meanings& meanings, int declaration) {
    const ScopeIndex& index = meanings.index();
    const Declaration& one = index.declarations()[at(declaration)];
    if (one.kind == DeclarationKind::enumValue) {
        const int owner = index.scopes()[at(one.scope)].owner;
        asITypeInfo* const type = owner == kNoIndex ? nullptr
                                                    : meanings.oracle().typeInfo(
                                                          index.pathOf(owner), one.nameRange.begin);
        return type == nullptr ? std::string() : enumValueOf(*type, one.name);
    }
    const bool constant = isVariable(one.kind) && index.oneLine(one.type).starts_with("const ");
    return constant ? initialiserOf(index, one) : std::string();
}

std::optional<HoverText> hoverAt(Meanings& meanings, const Documentation& library,
                                 std::size_t offset) {
    const ScopeIndex& index = meanings.index();
    const NameUse* const use = index.useAt(offset);
    if (use == nullptr || inRemarkOrText(index, offset)) return std::nullopt;
    if (const int base = meanings.calledBySuper(*use); base != kNoIndex)
        return HoverText{use->range(), headline(index, base), remarkAbove(index, base)};
    const Meaning meaning = meanings.of(*use);
    if (meaning.declarations.empty())
        return libraryHover(meaning, library, use->range(), meanings.nameOf(*use));
    const int declaration = meaning.declaration();
    HoverText hover{use->range(), headline(index, declaration), remarkAbove(index, declaration)};
    const Declaration& one = index.declarations()[at(declaration)];
    if (isVariable(one.kind) && index.oneLine(one.type).find("auto") != std::string::npos) {
        const std::string type = meanings.oracle().typeOfVariable(declaration);
        if (!type.empty()) hover.declaration = type + " " + std::string(one.name);
    }
    if (one.kind == DeclarationKind::enumValue) hover.declaration = index.pathOf(declaration);
    const std::string value = constantValue(meanings, declaration);
    if (!value.empty()) hover.declaration += " = " + value;
    return hover;
}

Signatures signaturesAt(Meanings& meanings, const Documentation& library, std::size_t offset) {
    Signatures signatures;
    const ScopeIndex& index = meanings.index();
    if (inRemark(index, offset)) return signatures;
    const auto& tokens = meanings.index().tokens();
    const OpenCall call = openCallAt(tokens, meanings.index().tokenAt(offset));
    if (call.bracket == 0) return signatures;
    const ScriptToken& name = tokens[call.bracket - 1];
    const std::string constructed = constructedAt(meanings, call.bracket);
    if (name.is("super")) {
        const int type = index.classAt(static_cast<std::size_t>(name.position));
        if (type != kNoIndex) addDeclared(meanings, index.basesOf(type), signatures);
    } else if (!constructed.empty()) {
        const int type = meanings.classNamed(constructed, offset);
        if (type != kNoIndex) addDeclared(meanings, {type}, signatures);
        asITypeInfo* const info = meanings.oracle().typeInfo(constructed, offset);
        if (type == kNoIndex && info != nullptr) addConstructors(*info, signatures);
    } else if (call.bracket > 1 && tokens[call.bracket - 2].is(".")) {
        addMembers(meanings, library, call.bracket, signatures);
    } else {
        addFunctions(meanings, library, name, signatures);
    }
    chooseActive(call, tokens, signatures);
    return signatures;
}

}  // namespace korvant
