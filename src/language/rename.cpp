#include "language/rename.h"

#include <algorithm>
#include <optional>
#include <set>

#include "language/script_help.h"

namespace korvant {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

bool isAccessorName(std::string_view name) {
    return name.starts_with("get_") || name.starts_with("set_");
}

/// A name as scripts may write it, that is no word of the language.
bool isGoodName(const std::string& name) {
    const std::vector<ScriptToken> tokens = scriptTokens(name);
    return tokens.size() == 1 && tokens[0].isName() && tokens[0].text == name &&
           !isBuiltInType(name) && name != "this" && name != "super";
}

/// The name of a class's constructors goes with it, that of a destructor behind its sign.
std::string nameOfFamily(const Meanings& meanings, const std::vector<int>& family) {
    const std::string_view name = meanings.index().declarations()[at(family.front())].name;
    return std::string(name.starts_with("~") ? name.substr(1) : name);
}

/// What every place of the two names means, by the numbers of declarations.
std::vector<int> meaningsOf(Meanings& meanings, const std::vector<std::size_t>& places) {
    std::vector<int> found;
    found.reserve(places.size());
    for (const std::size_t i : places)
        found.push_back(meanings.of(meanings.index().uses()[i]).declaration());
    return found;
}

/// The uses of both names, by their numbers.
std::vector<std::size_t> placesOf(const Meanings& meanings, const std::string& oldName,
                                  const std::string& newName) {
    std::vector<std::size_t> places;
    const auto& uses = meanings.index().uses();
    for (std::size_t i = 0; i < uses.size(); ++i) {
        const std::string_view name = meanings.nameOf(uses[i]);
        if (name == oldName || name == newName) places.push_back(i);
    }
    return places;
}

/// Something of that name twice in one scope, but for functions, which may.
bool declaredTwice(const ScopeIndex& index, const std::string& name) {
    std::set<int> scopes;
    bool twice = false;
    for (const NameUse* const use : index.usesOf(name)) {
        if (use->role != NameUse::Role::declares || use->declaration == kNoIndex) continue;
        const Declaration& one = index.declarations()[at(use->declaration)];
        const bool again = isCallable(one.kind) || one.kind == DeclarationKind::nameSpace;
        if (!again) twice = !scopes.insert(one.scope).second || twice;
    }
    return twice;
}

/// Nothing where it does not build.
std::optional<std::vector<std::string>> codeOfText(OracleEngine& engine, const std::string& text,
                                                   const std::string& oldName,
                                                   const std::string& newName) {
    engine.rest();
    asIScriptModule* const module = engine.build("renamed", text);
    if (module == nullptr) return std::nullopt;
    std::vector<std::string> code = codeOf(*module, oldName, newName);
    module->Discard();
    return code;
}

}  // namespace

std::string withEdits(const std::string& text, const std::vector<ByteRange>& edits,
                      const std::string& name) {
    std::string result;
    std::size_t done = 0;
    for (const ByteRange& edit : edits) {
        result.append(text, done, edit.begin - done);
        result += name;
        done = edit.end;
    }
    return result.append(text, done);
}

Sentence undeclared(const Meaning& meaning, const std::string& name) {
    return {meaning.known() ? sentences::kOfLibrary : sentences::kNotDeclared, {name}};
}

RenamePlace renamePlace(Meanings& meanings, std::size_t offset) {
    RenamePlace place;
    const NameUse* const use = meanings.index().useAt(offset);
    if (use == nullptr || inRemarkOrText(meanings.index(), offset)) {
        place.refusal = {sentences::kNoName};
        return place;
    }
    place.range = use->range();
    const std::string name(meanings.nameOf(*use));
    const Meaning meaning = meanings.of(*use);
    if (meaning.declarations.empty()) {
        place.refusal = undeclared(meaning, name);
    } else if (isOperatorName(name)) {
        place.refusal = {sentences::kOfLanguage, {name}};
    } else {
        place.family = meanings.familyOf(meaning.declaration());
        const std::string declared = nameOfFamily(meanings, place.family);
        if (declared.empty() || (declared != name && isAccessorName(declared)))
            place.refusal = {sentences::kOfAccessors, {name}};
        const auto kind = meanings.index().declarations()[at(place.family.front())].kind;
        if (kind == DeclarationKind::accessor) place.refusal = {sentences::kAccessor};
    }
    return place;
}

RenameResult renameAt(OracleEngine& engine, Meanings& meanings, std::size_t offset,
                      const std::string& newName) {
    RenameResult result;
    const RenamePlace place = renamePlace(meanings, offset);
    result.refusal = place.refusal;
    if (!result.refusal.empty()) return result;
    const std::string oldName = nameOfFamily(meanings, place.family);
    if (!isGoodName(newName)) {
        result.refusal = {sentences::kBadName, {newName}};
        return result;
    }
    if (isOperatorName(newName) || (isAccessorName(newName) != isAccessorName(oldName))) {
        result.refusal = {sentences::kOfLanguage, {newName}};
        return result;
    }
    if (oldName == newName) return result;
    const std::string& text = meanings.index().document().text();
    const std::vector<const NameUse*> uses = meanings.referencesTo(place.family);
    for (const NameUse* const use : uses) {
        const std::string name(meanings.nameOf(*use));
        if (name != oldName) {
            result.refusal = {sentences::kUsedAs, {oldName, name}};
            result.edits.clear();
            return result;
        }
        result.edits.push_back(use->range());
    }
    const std::string renamed = withEdits(text, result.edits, newName);
    const std::vector<std::size_t> places = placesOf(meanings, oldName, newName);
    const std::vector<int> meant = meaningsOf(meanings, places);
    const auto before = codeOfText(engine, text, oldName, newName);
    auto after = codeOfText(engine, renamed, oldName, newName);
    // What an engine keeps of the text before may be in the way.
    if (before && !after && engine.renew()) after = codeOfText(engine, renamed, oldName, newName);
    if (before && !after) {
        result.refusal = {sentences::kDoesNotFit, {newName, engine.firstError()}};
    } else if (before && *before != *after) {
        result.refusal = {sentences::kOtherCode, {newName}};
    } else {
        Meanings then(engine, std::make_shared<ScopeIndex>(renamed));
        const bool same = then.index().uses().size() == meanings.index().uses().size() &&
                          meaningsOf(then, places) == meant;
        if (!same || (!before && declaredTwice(then.index(), newName)))
            result.refusal = {sentences::kTaken, {newName, oldName}};
    }
    if (!result.refusal.empty()) result.edits.clear();
    return result;
}

}  // namespace korvant
