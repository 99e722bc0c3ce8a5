#include "language/meanings.h"

#include <algorithm>
#include <map>

#include "language/scope_chain.h"

namespace korvant {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

/// Without namespaces, so that what a script writes equals what the engine says.
std::string lastPart(std::string type) {
    const auto cut = type.rfind("::");
    return cut == std::string::npos ? type : type.substr(cut + 2);
}

bool matches(const asIScriptFunction& function, const std::vector<std::string>& types) {
    if (function.GetParamCount() != types.size()) return false;
    for (asUINT i = 0; i < function.GetParamCount(); ++i) {
        int id = 0;
        function.GetParam(i, &id);
        const char* const text = function.GetEngine()->GetTypeDeclaration(id);
        if (text == nullptr || lastPart(passedType(text)) != lastPart(types[i])) return false;
    }
    return true;
}

}  // namespace

std::vector<std::string> parameterTypes(const ScopeIndex& index, int function) {
    std::vector<std::string> types;
    const Declaration& declaration = index.declarations()[at(function)];
    if (declaration.inner == kNoIndex) return types;
    for (const int i : index.declaredIn(declaration.inner)) {
        const Declaration& parameter = index.declarations()[at(i)];
        if (parameter.kind == DeclarationKind::parameter)
            types.push_back(passedType(index.oneLine(parameter.type)));
    }
    return types;
}

Meanings::Meanings(OracleEngine& engine, std::shared_ptr<const ScopeIndex> index)
    : engine_(engine), index_(std::move(index)), oracle_(engine, *index_) {}

std::string_view Meanings::nameOf(const NameUse& use) const {
    return std::string_view(index_->document().text()).substr(use.begin, use.size);
}

Meaning Meanings::of(const NameUse& use) {
    if (use.role == NameUse::Role::labels) return ofLabel(use);
    if (use.member) {
        Meaning meaning = ofMember(use);
        if (meaning.known()) return meaning;
    }
    Meaning meaning;
    meaning.declarations = index_->meaningsOf(use);
    // A class is meant where its constructor stands as well.
    if (use.role == NameUse::Role::type || use.role == NameUse::Role::qualifies) {
        const auto isKind = [this](int i) {
            const DeclarationKind kind = index_->declarations()[at(i)].kind;
            return !isType(kind) && kind != DeclarationKind::nameSpace;
        };
        std::erase_if(meaning.declarations, isKind);
    }
    if (meaning.declarations.size() > 1 && use.role != NameUse::Role::declares)
        choose(use, meaning);
    if (!meaning.declarations.empty()) return meaning;
    if (!use.member) meaning.declarations = accessorsFor(use);
    return meaning.declarations.empty() ? ofLibrary(use) : meaning;
}

/// The parameter that an argument is given to by its name.
Meaning Meanings::ofLabel(const NameUse& use) {
    Meaning meaning;
    std::size_t open = index_->tokenAt(use.begin);
    for (int depth = 0; open > 0; --open) {
        const ScriptToken& token = index_->tokens()[open];
        if (token.is(")") || token.is("]") || token.is("}")) ++depth;
        if (token.is("(") || token.is("[") || token.is("{")) --depth;
        if (depth < 0 || token.is(";")) break;
    }
    if (open == 0 || !index_->tokens()[open].is("(")) return meaning;
    for (const int function : functionsCalledAt(open))
        for (const int i : index_->declaredIn(index_->declarations()[at(function)].inner)) {
            const Declaration& parameter = index_->declarations()[at(i)];
            const bool fits = parameter.kind == DeclarationKind::parameter &&
                              parameter.name == nameOf(use) && meaning.declarations.empty();
            if (fits) meaning.declarations = {i};
        }
    return meaning;
}

/// Functions of this text that the call with this opening bracket may mean, the best first; for
/// objects their constructors, for handles of functions their types.
std::vector<int> Meanings::functionsCalledAt(std::size_t bracket) {
    std::vector<int> functions;
    const auto& declarations = index_->declarations();
    if (bracket == 0) return functions;
    const auto before = static_cast<std::size_t>(index_->tokens()[bracket - 1].position);
    const auto constructorsOf = [&](int type) {
        for (const int i : index_->declaredIn(declarations[at(type)].inner))
            if (declarations[at(i)].kind == DeclarationKind::constructor) functions.push_back(i);
    };
    if (index_->tokens()[bracket - 1].is("super")) {
        const int type = index_->classAt(before);
        if (type != kNoIndex)
            for (const int base : index_->basesOf(type)) constructorsOf(base);
        return functions;
    }
    const NameUse* const use = index_->useAt(before);
    if (use == nullptr || use->begin != before) return functions;
    for (const int meant : of(*use).declarations) {
        const Declaration& one = declarations[at(meant)];
        int type = isType(one.kind) ? meant : kNoIndex;
        if (isVariable(one.kind)) type = classNamed(oracle_.typeOfVariable(meant), before);
        if (isCallable(one.kind) ||
            (type != kNoIndex && declarations[at(type)].kind == DeclarationKind::functionType))
            functions.push_back(isCallable(one.kind) ? meant : type);
        else if (type != kNoIndex)
            constructorsOf(type);
    }
    return functions;
}

namespace {

/// Of an assignment the one that sets comes first.
std::vector<int> accessors(std::vector<int> getters, std::vector<int> setters, bool writes) {
    if (writes) std::swap(getters, setters);
    getters.insert(getters.end(), setters.begin(), setters.end());
    return getters;
}

}  // namespace

/// "value" as a property is what "get_value" and "set_value" make of it.
std::vector<int> Meanings::accessorsIn(int type, const NameUse& use) const {
    const std::string name(nameOf(use));
    return accessors(index_->membersOf(type, "get_" + name), index_->membersOf(type, "set_" + name),
                     use.role == NameUse::Role::writes);
}

std::vector<int> Meanings::accessorsFor(const NameUse& use) const {
    const std::string name(nameOf(use));
    return accessors(index_->meaningsOf(use, "get_" + name), index_->meaningsOf(use, "set_" + name),
                     use.role == NameUse::Role::writes);
}

Meanings::Owner Meanings::ownerBefore(std::size_t dot) {
    const ByteRange chain = oracle_.chainBefore(dot);
    Owner owner{classByScopes(*this, chain), {}};
    if (owner.type != kNoIndex) return owner;
    owner.name = oracle_.typeOf(chain);
    if (!owner.name.empty()) owner.type = classWithPath(owner.name);
    return owner;
}

int Meanings::classNamed(std::string_view type, std::size_t offset) const {
    const std::string name = objectType(type);
    if (lastPart(name) == name)
        for (const int i : index_->meaningsOf(name, offset))
            if (isType(index_->declarations()[at(i)].kind)) return i;
    return classWithPath(name);
}

int Meanings::classWithPath(std::string_view type) const {
    const std::string name = objectType(type);
    int found = kNoIndex;
    for (const NameUse* const use : index_->usesOf(lastPart(name))) {
        if (use->role != NameUse::Role::declares || use->declaration == kNoIndex ||
            !isType(index_->declarations()[at(use->declaration)].kind))
            continue;
        const std::string path = index_->pathOf(use->declaration);
        if (path == name) return use->declaration;
        if (path.ends_with("::" + name)) found = use->declaration;
    }
    return found;
}

Meaning Meanings::ofMember(const NameUse& use) {
    Meaning meaning;
    const std::size_t token = index_->tokenAt(use.begin);
    if (token < 2 || !index_->tokens()[token - 1].is(".")) return meaning;
    const Owner owner = ownerBefore(static_cast<std::size_t>(index_->tokens()[token - 1].position));
    if (owner.type != kNoIndex) {
        meaning.declarations = index_->membersOf(owner.type, nameOf(use));
        if (meaning.declarations.size() > 1) choose(use, meaning);
        if (meaning.declarations.empty()) meaning.declarations = accessorsIn(owner.type, use);
        if (meaning.known()) return meaning;
    }
    asITypeInfo* const info = oracle_.typeInfo(owner.name, use.begin);
    return info != nullptr ? memberOfLibrary(*info, use) : meaning;
}

Meaning Meanings::memberOfLibrary(asITypeInfo& type, const NameUse& use) {
    Meaning meaning;
    meaning.owner = type.GetName();
    const std::string name(nameOf(use));
    for (asUINT i = 0; i < type.GetPropertyCount(); ++i) {
        const char* property = nullptr;
        if (type.GetProperty(i, &property) >= 0 && property == name) meaning.property = true;
    }
    std::vector<asIScriptFunction*> calls;
    if (use.role == NameUse::Role::calls) calls = oracle_.callsIn(callAround(use), name);
    if (!calls.empty()) meaning.function = calls.back();
    for (asUINT i = 0; i < type.GetMethodCount() && meaning.function == nullptr; ++i) {
        asIScriptFunction* const method = type.GetMethodByIndex(i);
        const std::string declared = method->GetName();
        if (declared == name || declared == "get_" + name || declared == "set_" + name)
            meaning.function = method;
    }
    return meaning;
}

Meaning Meanings::ofLibrary(const NameUse& use) {
    Meaning meaning;
    if (use.member) return meaning;
    const std::string name(nameOf(use));
    if (use.role == NameUse::Role::calls) {
        const auto calls = oracle_.callsIn(callAround(use), name);
        if (!calls.empty()) meaning.function = calls.back();
    }
    // Only now: a question to the compiler may have cost the engine of before.
    asIScriptEngine* const engine = engine_.engine();
    if (engine == nullptr) return {};
    for (asUINT i = 0; i < engine->GetGlobalFunctionCount() && meaning.function == nullptr; ++i)
        if (engine->GetGlobalFunctionByIndex(i)->GetName() == name)
            meaning.function = engine->GetGlobalFunctionByIndex(i);
    if (meaning.function != nullptr) return meaning;
    meaning.type = engine->GetTypeInfoByName(name.c_str());
    meaning.property =
        meaning.type == nullptr && engine->GetGlobalPropertyIndexByName(name.c_str()) >= 0;
    return meaning;
}

/// From the first word of its chain to the closing parenthesis.
ByteRange Meanings::callAround(const NameUse& use) const {
    const std::size_t name = index_->tokenAt(use.begin);
    const auto& tokens = index_->tokens();
    ByteRange range{use.begin, use.range().end};
    if (name > 1 && tokens[name - 1].is("."))
        range.begin =
            oracle_.chainBefore(static_cast<std::size_t>(tokens[name - 1].position)).begin;
    for (std::size_t i = name; i > 1 && tokens[i - 1].is("::") && tokens[i - 2].isName(); i -= 2)
        range.begin = static_cast<std::size_t>(tokens[i - 2].position);
    int open = 0;
    for (std::size_t i = name + 1; i < tokens.size(); ++i) {
        if (tokens[i].is("(")) ++open;
        if (tokens[i].is(")")) --open;
        if (tokens[i].is(";") || tokens[i].is("{")) break;
        if (open > 0) continue;
        if (tokens[i].is(")")) range.end = static_cast<std::size_t>(tokens[i].end());
        break;
    }
    return range;
}

/// What stands between the commas of a call.
std::vector<ByteRange> Meanings::argumentsAt(std::size_t bracket) const {
    const auto& tokens = index_->tokens();
    std::vector<ByteRange> arguments;
    int depth = 0;
    for (std::size_t i = bracket; i < tokens.size() && !tokens[i].is(";"); ++i) {
        const ScriptToken& token = tokens[i];
        const bool closes = token.is(")") || token.is("]") || token.is("}");
        if (closes && --depth == 0) break;
        const bool starts = (i == bracket && !tokens[std::min(i + 1, tokens.size() - 1)].is(")")) ||
                            (depth == 1 && token.is(","));
        if (starts) {
            const auto begin = static_cast<std::size_t>(token.end());
            arguments.push_back({begin, begin});
        } else if (!arguments.empty()) {
            arguments.back().end = static_cast<std::size_t>(token.end());
        }
        if (token.is("(") || token.is("[") || token.is("{")) ++depth;
    }
    return arguments;
}

/// Below 0 where the function does not take so many arguments; else the more of its types are just
/// those, the more.
int Meanings::fit(int function, const std::vector<ByteRange>& arguments) {
    const Declaration& one = index_->declarations()[at(function)];
    const std::vector<std::string> types = parameterTypes(*index_, function);
    std::size_t needed = 0;
    for (const int i : index_->declaredIn(one.inner)) {
        const Declaration& parameter = index_->declarations()[at(i)];
        if (parameter.kind != DeclarationKind::parameter) continue;
        const bool given = index_->oneLine(parameter.whole).find('=') != std::string::npos;
        if (!given) ++needed;
    }
    if (arguments.size() < needed || arguments.size() > types.size()) return -1;
    int same = 0;
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (lastPart(objectType(passedType(oracle_.typeOf(arguments[i])))) ==
            lastPart(objectType(types[i])))
            ++same;
    return same;
}

int Meanings::calledBySuper(const NameUse& use) {
    const int type = nameOf(use) == "super" ? index_->classAt(use.begin) : kNoIndex;
    if (type == kNoIndex) return kNoIndex;
    const std::size_t bracket = index_->tokenAt(use.begin) + 1;
    if (bracket < index_->tokens().size() && index_->tokens()[bracket].is("(")) {
        const std::vector<ByteRange> arguments = argumentsAt(bracket);
        int best = -1;
        int called = kNoIndex;
        for (const int one : functionsCalledAt(bracket))
            if (const int fits = fit(one, arguments); fits > best) {
                best = fits;
                called = one;
            }
        if (called != kNoIndex) return called;
    }
    for (const int base : index_->basesOf(type))
        if (index_->declarations()[at(base)].kind == DeclarationKind::classType) return base;
    return kNoIndex;
}

/// Of overloads the one that the compiler calls comes first; of a member and what it hides, the
/// member.
void Meanings::choose(const NameUse& use, Meaning& meaning) {
    const auto& declarations = index_->declarations();
    const bool callable = std::all_of(meaning.declarations.begin(), meaning.declarations.end(),
                                      [&](int i) { return isCallable(declarations[at(i)].kind); });
    if (!callable || use.role != NameUse::Role::calls) return;
    const auto calls = oracle_.callsIn(callAround(use), nameOf(use));
    if (calls.empty()) return;
    const auto meant =
        std::find_if(meaning.declarations.begin(), meaning.declarations.end(),
                     [&](int i) { return matches(*calls.back(), parameterTypes(*index_, i)); });
    if (meant == meaning.declarations.end()) return;
    meaning.declarations = {*meant};
}

int Meanings::ownerOf(int declaration) const {
    return index_->scopes()[at(index_->declarations()[at(declaration)].scope)].owner;
}

std::vector<int> Meanings::derivedFrom(int type) const {
    const auto& declarations = index_->declarations();
    if (derived_.empty()) {
        derived_.resize(declarations.size());
        for (int i = 0; i < static_cast<int>(declarations.size()); ++i)
            if (isType(declarations[at(i)].kind))
                for (const int base : index_->basesOf(i)) derived_[at(base)].push_back(i);
    }
    std::vector<int> found;
    std::set<int> seen = {type};
    std::vector<int> waiting = derived_[at(type)];
    while (!waiting.empty()) {
        const int next = waiting.back();
        waiting.pop_back();
        if (!seen.insert(next).second) continue;
        found.push_back(next);
        waiting.insert(waiting.end(), derived_[at(next)].begin(), derived_[at(next)].end());
    }
    std::sort(found.begin(), found.end());
    return found;
}

/// A method with all that override it or that it overrides, through a chain of classes. The one
/// found last is asked first: it is at an end of its chain, and the others stand in its line.
std::set<int> Meanings::overridesOf(int method) const {
    const auto& declarations = index_->declarations();
    const std::vector<std::string> types = parameterTypes(*index_, method);
    std::map<int, std::vector<int>> byOwner;
    for (const NameUse* const use : index_->usesOf(declarations[at(method)].name)) {
        const int other = use->role == NameUse::Role::declares ? use->declaration : kNoIndex;
        if (other == kNoIndex || declarations[at(other)].kind != DeclarationKind::method) continue;
        if (parameterTypes(*index_, other) == types) byOwner[ownerOf(other)].push_back(other);
    }
    std::set<int> family = {method};
    std::set<int> above, below;  // whose lines have been followed
    std::vector<int> waiting = {ownerOf(method)};
    while (!waiting.empty()) {
        const int owner = waiting.back();
        waiting.pop_back();
        if (owner == kNoIndex) continue;
        const auto follow = [&](const std::vector<int>& related, std::set<int>& followed) {
            for (const int type : related) {
                const auto found = byOwner.find(type);
                const bool isNew = followed.insert(type).second;
                if (found == byOwner.end() || !isNew) continue;
                family.insert(found->second.begin(), found->second.end());
                if (type != owner) waiting.push_back(type);
            }
        };
        if (above.count(owner) == 0) follow(index_->lineageOf(owner), above);
        if (below.count(owner) == 0) follow(derivedFrom(owner), below);
    }
    return family;
}

std::vector<int> Meanings::familyOf(int declaration) const {
    const auto& declarations = index_->declarations();
    std::set<int> family = {declaration};
    const Declaration& one = declarations[at(declaration)];
    if (isType(one.kind))
        for (const int i : index_->declaredIn(one.inner))
            if (declarations[at(i)].kind == DeclarationKind::constructor ||
                declarations[at(i)].kind == DeclarationKind::destructor)
                family.insert(i);
    if (one.kind == DeclarationKind::constructor || one.kind == DeclarationKind::destructor)
        return familyOf(ownerOf(declaration));
    if (one.kind == DeclarationKind::nameSpace)
        for (const NameUse* const use : index_->usesOf(one.name))
            if (use->role == NameUse::Role::declares && use->declaration != kNoIndex &&
                declarations[at(use->declaration)].kind == DeclarationKind::nameSpace &&
                index_->pathOf(use->declaration) == index_->pathOf(declaration))
                family.insert(use->declaration);
    if (one.kind != DeclarationKind::method) return {family.begin(), family.end()};
    family = overridesOf(declaration);
    return {family.begin(), family.end()};
}

std::vector<const NameUse*> Meanings::referencesTo(const std::vector<int>& family) {
    std::vector<const NameUse*> found;
    if (family.empty()) return found;
    const auto& declarations = index_->declarations();
    std::set<std::string_view> names;
    for (const int i : family) {
        const std::string_view name = declarations[at(i)].name;
        names.insert(name.starts_with("~") ? name.substr(1) : name);
        if (name.starts_with("get_") || name.starts_with("set_")) names.insert(name.substr(4));
    }
    for (const std::string_view name : names)
        for (const NameUse* const use : index_->usesOf(name)) {
            const Meaning meaning = of(*use);
            const bool same = std::any_of(
                meaning.declarations.begin(), meaning.declarations.end(),
                [&](int i) { return std::find(family.begin(), family.end(), i) != family.end(); });
            if (same) found.push_back(use);
        }
    std::sort(found.begin(), found.end(),
              [](const NameUse* left, const NameUse* right) { return left->begin < right->begin; });
    return found;
}

}  // namespace korvant
