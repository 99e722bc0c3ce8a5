#include "language/rename.h"

#include <algorithm>

namespace korvant {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

/// Names that the language itself calls.
bool isOperatorName(std::string_view name) {
    return name.size() > 2 && name.starts_with("op") && name[2] >= 'A' && name[2] <= 'Z';
}

bool isAccessorName(std::string_view name) {
    return name.starts_with("get_") || name.starts_with("set_");
}

/// A name as scripts may write it, that is no word of the language.
bool isGoodName(const std::string& name) {
    const std::vector<ScriptToken> tokens = scriptTokens(name);
    return tokens.size() == 1 && tokens[0].isName() && tokens[0].text == name &&
           !isBuiltInType(name) && !isStatementWord(name) && name != "this" && name != "super";
}

bool isInRemarkOrText(const ScopeIndex& index, std::size_t offset) {
    for (const ScriptToken& token : scriptTokens(index.document().text(), Comments::keep)) {
        const bool quiet =
            token.kind == ScriptToken::Kind::comment || token.kind == ScriptToken::Kind::text;
        const auto begin = static_cast<std::size_t>(token.position);
        if (quiet && begin < offset && offset < static_cast<std::size_t>(token.end())) return true;
    }
    return false;
}

/// The name of a class's constructors goes with it, that of a destructor behind its sign.
std::string nameOfFamily(const Meanings& meanings, const std::vector<int>& family) {
    const std::string_view name = meanings.index().declarations()[at(family.front())].name;
    return std::string(name.starts_with("~") ? name.substr(1) : name);
}

/// Whether every place of a name means what it meant: the same declarations by their numbers.
bool sameMeanings(Meanings& before, Meanings& after, const std::string& oldName,
                  const std::string& newName, const std::vector<const NameUse*>& renamed) {
    const auto& uses = before.index().uses();
    const auto& changed = after.index().uses();
    if (uses.size() != changed.size()) return false;
    for (std::size_t i = 0; i < uses.size(); ++i) {
        const std::string_view name = before.nameOf(uses[i]);
        if (name != oldName && name != newName) continue;
        const Meaning was = before.of(uses[i]);
        const Meaning is = after.of(changed[i]);
        const bool moved = std::find(renamed.begin(), renamed.end(), &uses[i]) != renamed.end();
        if (was.declaration() != is.declaration()) return false;
        if (!moved && name == oldName && after.nameOf(changed[i]) != oldName) return false;
    }
    return true;
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

RenamePlace renamePlace(Meanings& meanings, std::size_t offset) {
    RenamePlace place;
    const NameUse* const use = meanings.index().useAt(offset);
    if (use == nullptr || isInRemarkOrText(meanings.index(), offset)) {
        place.refusal = "There is no name here that could be changed";
        return place;
    }
    place.range = use->range();
    const std::string name(meanings.nameOf(*use));
    const Meaning meaning = meanings.of(*use);
    if (meaning.declarations.empty()) {
        place.refusal = meaning.known() ? "\"" + name + "\" belongs to the library"
                                        : "\"" + name + "\" is not declared in this script";
    } else if (isOperatorName(name)) {
        place.refusal = "\"" + name + "\" is a name that the language calls by itself";
    } else {
        place.family = meanings.familyOf(meaning.declaration());
        const std::string declared = nameOfFamily(meanings, place.family);
        if (declared.empty() || (declared != name && isAccessorName(declared)))
            place.refusal = "\"" + name + "\" is made of accessors; change the names of those";
        const auto kind = meanings.index().declarations()[at(place.family.front())].kind;
        if (kind == DeclarationKind::accessor)
            place.refusal = "accessors have no names of their own";
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
        result.refusal = "\"" + newName + "\" cannot be a name";
        return result;
    }
    if (isOperatorName(newName) || (isAccessorName(newName) != isAccessorName(oldName))) {
        result.refusal = "\"" + newName + "\" is a name that the language calls by itself";
        return result;
    }
    if (oldName == newName) return result;
    const std::string& text = meanings.index().document().text();
    const std::vector<const NameUse*> uses = meanings.referencesTo(place.family);
    for (const NameUse* const use : uses)
        if (meanings.nameOf(*use) == oldName) result.edits.push_back(use->range());
    const std::string renamed = withEdits(text, result.edits, newName);
    asIScriptModule* const before = engine.build("before", text);
    asIScriptModule* const after = engine.build("after", renamed);
    if (before != nullptr && after == nullptr) {
        result.refusal = "\"" + newName + "\" does not fit here: " + engine.firstError();
    } else if (before != nullptr &&
               codeOf(*before, oldName, newName) != codeOf(*after, oldName, newName)) {
        result.refusal = "\"" + newName + "\" is taken: other code would mean something else";
    }
    if (before != nullptr) before->Discard();
    if (after != nullptr) after->Discard();
    if (result.refusal.empty()) {
        Meanings then(engine, std::make_shared<ScopeIndex>(renamed));
        if (!sameMeanings(meanings, then, oldName, newName, uses))
            result.refusal = "\"" + newName + "\" is taken where \"" + oldName + "\" is used";
    }
    if (!result.refusal.empty()) result.edits.clear();
    return result;
}

}  // namespace korvant
