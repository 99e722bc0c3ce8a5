#include "language/meanings.h"

#include <algorithm>
#include <set>

namespace korvant {

namespace {

constexpr int kDeepest = 32;

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
    if (use.role == NameUse::Role::labels) return {};
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
    const int type = use.member || use.qualified ? kNoIndex : index_->classAt(use.begin);
    if (type != kNoIndex) meaning.declarations = accessorsIn(type, nameOf(use));
    return meaning.declarations.empty() ? ofLibrary(use) : meaning;
}

/// "value" as a property is what "get_value" and "set_value" make of it.
std::vector<int> Meanings::accessorsIn(int type, std::string_view name) const {
    std::vector<int> found = index_->membersOf(type, "get_" + std::string(name));
    const std::vector<int> setters = index_->membersOf(type, "set_" + std::string(name));
    found.insert(found.end(), setters.begin(), setters.end());
    return found;
}

std::string Meanings::ownerTypeOf(const NameUse& use) {
    const std::size_t token = oracle_.tokenAt(use.begin);
    if (token < 2 || !oracle_.tokens()[token - 1].is(".")) return {};
    return oracle_.typeOf(
        oracle_.chainBefore(static_cast<std::size_t>(oracle_.tokens()[token - 1].position)));
}

int Meanings::classNamed(std::string_view type, std::size_t offset) const {
    const std::string name = objectType(type);
    for (const int i : index_->meaningsOf(lastPart(name), offset))
        if (isType(index_->declarations()[at(i)].kind)) return i;
    for (std::size_t i = 0; i < index_->declarations().size(); ++i) {
        const Declaration& declaration = index_->declarations()[i];
        if (isType(declaration.kind) && index_->pathOf(static_cast<int>(i)) == name)
            return static_cast<int>(i);
    }
    return kNoIndex;
}

Meaning Meanings::ofMember(const NameUse& use) {
    Meaning meaning;
    const std::string owner = ownerTypeOf(use);
    if (owner.empty()) return meaning;
    const int type = classNamed(owner, use.begin);
    if (type != kNoIndex) {
        meaning.declarations = index_->membersOf(type, nameOf(use));
        if (meaning.declarations.size() > 1) choose(use, meaning);
        if (meaning.declarations.empty()) meaning.declarations = accessorsIn(type, nameOf(use));
        if (meaning.known()) return meaning;
    }
    asITypeInfo* const info = oracle_.typeInfo(owner, use.begin);
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
    asIScriptEngine* const engine = engine_.engine();
    if (engine == nullptr || use.member) return meaning;
    const std::string name(nameOf(use));
    if (use.role == NameUse::Role::calls) {
        const auto calls = oracle_.callsIn(callAround(use), name);
        if (!calls.empty()) meaning.function = calls.back();
    }
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
    const std::size_t name = oracle_.tokenAt(use.begin);
    const auto& tokens = oracle_.tokens();
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

bool Meanings::inherits(int type, int base, int depth) const {
    if (type == base) return true;
    if (depth >= kDeepest || type == kNoIndex) return false;
    const Declaration& declaration = index_->declarations()[at(type)];
    for (const std::string_view name : declaration.bases) {
        const int next = classNamed(name, declaration.whole.begin);
        if (next != kNoIndex && next != type && inherits(next, base, depth + 1)) return true;
    }
    return false;
}

bool Meanings::sameParameters(int left, int right) const {
    return parameterTypes(*index_, left) == parameterTypes(*index_, right);
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
    if (one.kind != DeclarationKind::method) return {family.begin(), family.end()};
    // Related through a chain of classes: until nothing is added any more.
    for (bool grown = true; grown;) {
        grown = false;
        for (std::size_t i = 0; i < declarations.size(); ++i) {
            const int other = static_cast<int>(i);
            if (declarations[i].kind != DeclarationKind::method ||
                declarations[i].name != one.name || family.count(other) > 0)
                continue;
            const bool related = std::any_of(family.begin(), family.end(), [&](int member) {
                return sameParameters(member, other) &&
                       (inherits(ownerOf(member), ownerOf(other), 0) ||
                        inherits(ownerOf(other), ownerOf(member), 0));
            });
            if (related) grown = family.insert(other).second;
        }
    }
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
