#include "language/script_help.h"

#include <algorithm>

#include "language/completion.h"
#include "language/expression_before.h"

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

void addDeclared(Meanings& meanings, const std::vector<int>& declarations, Signatures& signatures) {
    const ScopeIndex& index = meanings.index();
    for (const int i : declarations) {
        const Declaration& one = index.declarations()[at(i)];
        if (isType(one.kind)) {
            for (const int inner : index.declaredIn(one.inner))
                if (index.declarations()[at(inner)].kind == DeclarationKind::constructor)
                    signatures.all.push_back(
                        signatureOf(headline(index, inner), remarkAbove(index, inner)));
            if (signatures.all.empty())
                signatures.all.push_back(signatureOf(std::string(one.name) + "()", {}));
        } else if (isCallable(one.kind)) {
            signatures.all.push_back(signatureOf(headline(index, i), remarkAbove(index, i)));
        }
    }
}

}  // namespace

bool inRemarkOrText(const ScopeIndex& index, std::size_t offset) {
    const std::vector<ScriptToken> tokens = scriptTokens(index.document().text(), Comments::keep);
    const auto behind = std::upper_bound(
        tokens.begin(), tokens.end(), static_cast<int>(offset),
        [](int place, const ScriptToken& token) { return place <= token.position; });
    if (behind == tokens.begin()) return false;
    const ScriptToken& token = *(behind - 1);
    const bool comment = token.kind == ScriptToken::Kind::comment;
    if (!comment && token.kind != ScriptToken::Kind::text) return false;
    // At the end of a remark of one line one still writes the remark.
    const bool open = !token.ended || (comment && token.text.starts_with("//"));
    return static_cast<int>(offset) < token.end() ||
           (open && static_cast<int>(offset) == token.end());
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
    if (inRemarkOrText(index, offset)) return signatures;
    const std::string_view text = index.document().text();
    const CallBefore call = callBefore(text.substr(0, offset), false);
    if (call.bracket < 0 || call.function.word.empty()) return signatures;
    const std::string& name = call.function.word;
    const auto bracket = static_cast<std::size_t>(call.bracket);
    if (call.function.member) {
        const std::size_t token = meanings.oracle().tokenAt(bracket);
        if (token < 2) return signatures;
        const auto dot = static_cast<std::size_t>(meanings.oracle().tokens()[token - 2].position);
        const std::string owner = meanings.oracle().typeOf(meanings.oracle().chainBefore(dot));
        const int type = meanings.classNamed(owner, offset);
        if (type != kNoIndex) addDeclared(meanings, index.membersOf(type, name), signatures);
        asITypeInfo* const info = meanings.oracle().typeInfo(owner, offset);
        if (type == kNoIndex && info != nullptr) addMethods(*info, name, library, signatures);
    } else {
        const NameUse* const use = index.useAt(bracket);
        addDeclared(meanings,
                    use != nullptr ? index.meaningsOf(*use) : index.meaningsOf(name, bracket),
                    signatures);
        asIScriptModule* const module = meanings.oracle().module();
        asIScriptEngine* const engine = module == nullptr ? nullptr : module->GetEngine();
        for (asUINT i = 0; engine != nullptr && i < engine->GetGlobalFunctionCount(); ++i) {
            const asIScriptFunction* const function = engine->GetGlobalFunctionByIndex(i);
            if (function->GetName() == name)
                signatures.all.push_back(
                    signatureOf(libraryDeclaration(*function), library.of(*function).markdown()));
        }
        asITypeInfo* const type =
            engine == nullptr ? nullptr : engine->GetTypeInfoByName(name.c_str());
        if (type != nullptr) addConstructors(*type, signatures);
    }
    signatures.parameter = static_cast<std::size_t>(std::max(0, call.argument));
    const auto fits = std::find_if(
        signatures.all.begin(), signatures.all.end(),
        [&](const SignatureText& one) { return one.parameters.size() > signatures.parameter; });
    if (fits != signatures.all.end())
        signatures.active = static_cast<std::size_t>(fits - signatures.all.begin());
    return signatures;
}

}  // namespace korvant
