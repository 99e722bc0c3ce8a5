#include "language/scope_index.h"

#include <algorithm>

namespace korvant {

namespace {

/// Parts of a path; what is nested deeper is faulty.
constexpr int kLongestPath = 32;

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

/// The brace of the innermost body that nothing closes; npos for none.
std::size_t openBody(const std::vector<ScriptToken>& tokens) {
    std::vector<std::size_t> open;
    for (const ScriptToken& token : tokens) {
        if (token.is("{")) open.push_back(static_cast<std::size_t>(token.position));
        if (token.is("}") && !open.empty()) open.pop_back();
    }
    return open.empty() ? std::string_view::npos : open.back();
}

}  // namespace

ScopeIndex::ScopeIndex(std::string text)
    : document_(std::move(text)),
      tokens_(codeAndRemarks(document_.text())),
      syntax_(readSyntax(document_.text(), tokens_.code)),
      openBody_(openBody(tokens_.code)) {
    declared_.resize(syntax_.scopes.size());
    for (std::size_t i = 0; i < syntax_.declarations.size(); ++i) {
        const Declaration& declaration = syntax_.declarations[i];
        declared_[at(declaration.scope)].push_back(static_cast<int>(i));
        byName_[declaration.name].push_back(static_cast<int>(i));
    }
    for (std::size_t i = 0; i < syntax_.uses.size(); ++i)
        usesByName_[nameOf(syntax_.uses[i])].push_back(static_cast<int>(i));
}

std::string_view ScopeIndex::nameOf(const NameUse& use) const {
    return std::string_view(document_.text()).substr(use.begin, use.size);
}

int ScopeIndex::scopeAt(std::size_t offset) const {
    // What is written at the text's end belongs to the body that is being written.
    const bool behindAll =
        !tokens_.code.empty() && offset >= static_cast<std::size_t>(tokens_.code.back().end());
    if (behindAll && openBody_ != std::string_view::npos) offset = openBody_;
    // Scopes stand in the order of their beginnings, so the last one around is the innermost.
    const auto& scopes = syntax_.scopes;
    const auto behind = std::upper_bound(
        scopes.begin(), scopes.end(), offset,
        [](std::size_t place, const Scope& scope) { return place < scope.range.begin; });
    int scope = std::max(static_cast<int>(behind - scopes.begin()) - 1, 0);
    while (scope > 0 && offset >= scopes[at(scope)].range.end) scope = scopes[at(scope)].parent;
    return scope;
}

int ScopeIndex::functionAt(std::size_t offset) const {
    for (int scope = scopeAt(offset); scope > 0; scope = syntax_.scopes[at(scope)].parent)
        if (syntax_.scopes[at(scope)].kind == Scope::Kind::function)
            return syntax_.scopes[at(scope)].owner;
    return kNoIndex;
}

int ScopeIndex::classAt(std::size_t offset) const {
    for (int scope = scopeAt(offset); scope > 0; scope = syntax_.scopes[at(scope)].parent) {
        const Scope& around = syntax_.scopes[at(scope)];
        if (around.kind == Scope::Kind::type) return around.owner;
        if (isNameless(around)) return kNoIndex;
    }
    return kNoIndex;
}

/// Of a function without a name, which sees neither the locals nor the members around it.
bool ScopeIndex::isNameless(const Scope& scope) const {
    return scope.kind == Scope::Kind::function && scope.owner != kNoIndex &&
           syntax_.declarations[at(scope.owner)].kind == DeclarationKind::lambda;
}

const NameUse* ScopeIndex::useAt(std::size_t offset) const {
    const auto behind =
        std::upper_bound(syntax_.uses.begin(), syntax_.uses.end(), offset,
                         [](std::size_t place, const NameUse& use) { return place < use.begin; });
    if (behind == syntax_.uses.begin()) return nullptr;
    const NameUse& use = *(behind - 1);
    return offset <= use.range().end ? &use : nullptr;
}

std::vector<const NameUse*> ScopeIndex::usesOf(std::string_view name) const {
    std::vector<const NameUse*> result;
    const auto found = usesByName_.find(name);
    if (found == usesByName_.end()) return result;
    for (const int index : found->second) result.push_back(&syntax_.uses[at(index)]);
    return result;
}

std::size_t ScopeIndex::tokenAt(std::size_t offset) const {
    const ScriptToken* const before = tokenBefore(tokens_.code, offset);
    return before == nullptr ? 0 : static_cast<std::size_t>(before - tokens_.code.data()) + 1;
}

/// Locals are known behind their own name, everything else everywhere in its scope.
bool ScopeIndex::knownAt(const Declaration& declaration, std::size_t offset) const {
    return declaration.kind != DeclarationKind::local || declaration.nameRange.end <= offset;
}

int ScopeIndex::variableAt(std::string_view name, std::size_t offset) const {
    const auto found = byName_.find(name);
    if (found == byName_.end()) return kNoIndex;
    for (int scope = scopeAt(offset); scope > 0; scope = syntax_.scopes[at(scope)].parent) {
        int last = kNoIndex;
        for (const int index : found->second) {
            const Declaration& declaration = syntax_.declarations[at(index)];
            const bool local = declaration.kind == DeclarationKind::local ||
                               declaration.kind == DeclarationKind::parameter;
            if (local && declaration.scope == scope && knownAt(declaration, offset)) last = index;
        }
        if (last != kNoIndex) return last;
        // The locals around a nameless function are not seen inside.
        if (syntax_.scopes[at(scope)].kind == Scope::Kind::function) return kNoIndex;
    }
    return kNoIndex;
}

std::vector<int> ScopeIndex::variablesAt(std::size_t offset) const {
    std::vector<int> result;
    for (int scope = scopeAt(offset); scope > 0; scope = syntax_.scopes[at(scope)].parent) {
        const auto& list = declared_[at(scope)];
        for (auto i = list.rbegin(); i != list.rend(); ++i) {
            const Declaration& declaration = syntax_.declarations[at(*i)];
            if (!isVariable(declaration.kind) || !knownAt(declaration, offset)) continue;
            const bool hidden = std::any_of(result.begin(), result.end(), [&](int known) {
                return syntax_.declarations[at(known)].name == declaration.name;
            });
            if (!hidden) result.push_back(*i);
        }
        if (syntax_.scopes[at(scope)].kind == Scope::Kind::function) break;
    }
    return result;
}

const std::vector<int>& ScopeIndex::declaredIn(int scope) const {
    static const std::vector<int> none;
    return scope >= 0 && at(scope) < declared_.size() ? declared_[at(scope)] : none;
}

std::vector<int> ScopeIndex::basesOf(int type) const {
    std::vector<int> found;
    for (const std::string_view base : syntax_.declarations[at(type)].bases) {
        const NameUse* const use =
            useAt(static_cast<std::size_t>(base.data() - document_.text().data()));
        if (use == nullptr) continue;
        for (const int meant : pathsOf(*use, base))
            if (meant != type && isType(syntax_.declarations[at(meant)].kind)) {
                found.push_back(meant);
                break;
            }
    }
    return found;
}

std::vector<int> ScopeIndex::lineageOf(int type) const {
    constexpr std::size_t kFew = 32;
    std::vector<int> lineage;
    std::vector<int> waiting = {type};
    std::vector<bool> seen;  // where they are many
    while (!waiting.empty()) {
        const int next = waiting.back();
        waiting.pop_back();
        const bool known = seen.empty()
                               ? std::find(lineage.begin(), lineage.end(), next) != lineage.end()
                               : seen[at(next)];
        if (known) continue;
        lineage.push_back(next);
        if (!seen.empty()) seen[at(next)] = true;
        if (seen.empty() && lineage.size() == kFew) {
            seen.resize(syntax_.declarations.size());
            for (const int one : lineage) seen[at(one)] = true;
        }
        const std::vector<int> bases = basesOf(next);
        waiting.insert(waiting.end(), bases.rbegin(), bases.rend());
    }
    return lineage;
}

std::vector<int> ScopeIndex::membersOf(int type, std::string_view name) const {
    std::vector<int> found;
    const auto named = byName_.find(name);
    if (named == byName_.end()) return found;
    for (const int one : lineageOf(type)) {
        const int inner = syntax_.declarations[at(one)].inner;
        for (const int index : named->second)
            if (inner != kNoIndex && syntax_.declarations[at(index)].scope == inner)
                found.push_back(index);
    }
    return found;
}

std::vector<int> ScopeIndex::meaningsOf(std::string_view name, std::size_t offset) const {
    if (const int variable = variableAt(name, offset); variable != kNoIndex) return {variable};
    std::vector<int> found;
    bool nameless = false;
    for (int scope = scopeAt(offset); scope != kNoIndex && found.empty();
         scope = syntax_.scopes[at(scope)].parent) {
        const Scope& around = syntax_.scopes[at(scope)];
        nameless = nameless || isNameless(around);
        if (around.kind == Scope::Kind::type) {
            if (!nameless) found = membersOf(around.owner, name);
            // Their name is that of the class.
            std::erase_if(found, [this](int i) {
                const DeclarationKind kind = syntax_.declarations[at(i)].kind;
                return kind == DeclarationKind::constructor || kind == DeclarationKind::destructor;
            });
        } else if (around.kind == Scope::Kind::nameSpace || around.kind == Scope::Kind::file) {
            inPath({}, name, scope, found);
        }
    }
    return found;
}

/// What `name` is in the namespace (or class, or enum) that `path` leads to from `scope`. A
/// namespace may be opened several times.
void ScopeIndex::inPath(const std::vector<std::string_view>& path, std::string_view name, int scope,
                        std::vector<int>& found) const {
    const std::string around = syntax_.scopes[at(scope)].owner == kNoIndex
                                   ? std::string()
                                   : pathOf(syntax_.scopes[at(scope)].owner);
    std::string wanted = around;
    for (const std::string_view part : path) {
        if (!wanted.empty()) wanted += "::";
        wanted += part;
    }
    const auto named = byName_.find(name);
    if (named == byName_.end()) return;
    for (const int index : named->second) {
        const Declaration& declaration = syntax_.declarations[at(index)];
        const Scope& in = syntax_.scopes[at(declaration.scope)];
        const bool local = in.kind == Scope::Kind::block || in.kind == Scope::Kind::function;
        const bool enumValue = declaration.kind == DeclarationKind::enumValue;
        if (local) continue;
        std::string of = in.owner == kNoIndex ? std::string() : pathOf(in.owner);
        if (of == wanted) {
            found.push_back(index);
        } else if (enumValue) {
            // The values of an enum are known beside it as well.
            const auto cut = of.rfind("::");
            if ((cut == std::string::npos ? std::string() : of.substr(0, cut)) == wanted)
                found.push_back(index);
        }
    }
}

/// The words before "::" in front of a use, and whether nothing stands before the first "::".
ScopeIndex::Path ScopeIndex::pathBefore(const NameUse& use) const {
    const auto& uses = syntax_.uses;
    Path path;
    if (!use.qualified) return path;
    path.global = true;
    for (std::size_t i = static_cast<std::size_t>(&use - uses.data()); i > 0; --i) {
        const NameUse& before = uses[i - 1];
        if (before.role != NameUse::Role::qualifies) break;
        path.words.insert(path.words.begin(), nameOf(before));
        path.global = before.qualified;
        if (!before.qualified) break;
    }
    return path;
}

/// What `name` is in the namespaces and types of the path in front of `use`.
std::vector<int> ScopeIndex::pathsOf(const NameUse& use, std::string_view name) const {
    const Path path = pathBefore(use);
    std::vector<int> found;
    for (int scope = path.global ? 0 : use.scope; scope != kNoIndex && found.empty();
         scope = syntax_.scopes[at(scope)].parent) {
        const Scope::Kind kind = syntax_.scopes[at(scope)].kind;
        if (kind == Scope::Kind::nameSpace || kind == Scope::Kind::file)
            inPath(path.words, name, scope, found);
    }
    return found;
}

std::vector<int> ScopeIndex::qualified(const NameUse& use, std::string_view name) const {
    std::vector<int> found = pathsOf(use, name);
    const std::vector<std::string_view> path = pathBefore(use).words;
    if (!found.empty() || path.empty()) return found;
    // "Base::method()" may be inherited by Base itself.
    const auto named = byName_.find(path.back());
    if (named == byName_.end()) return found;
    for (const int index : named->second)
        if (isType(syntax_.declarations[at(index)].kind)) {
            const std::vector<int> inherited = membersOf(index, name);
            found.insert(found.end(), inherited.begin(), inherited.end());
        }
    return found;
}

std::vector<int> ScopeIndex::meaningsOf(const NameUse& use) const {
    if (use.role == NameUse::Role::declares) return {use.declaration};
    return meaningsOf(use, nameOf(use));
}

std::vector<int> ScopeIndex::meaningsOf(const NameUse& use, std::string_view name) const {
    if (use.role == NameUse::Role::labels) return {};
    if (use.qualified) return qualified(use, name);
    if (!use.member) return meaningsOf(name, use.begin);
    const std::string_view before = std::string_view(document_.text()).substr(0, use.begin);
    const auto dot = before.find_last_not_of(" \t\r\n", before.rfind('.') - 1);
    const int type = classAt(use.begin);
    const bool ofThis = dot != std::string_view::npos && dot >= 3 &&
                        before.substr(dot - 3, 4) == "this" &&
                        (dot == 3 || !isWordByte(before[dot - 4]));
    if (!ofThis || type == kNoIndex) return {};
    return membersOf(type, name);
}

std::string ScopeIndex::pathOf(int declaration) const {
    std::string path;
    const Declaration* inner = &syntax_.declarations[at(declaration)];
    for (int depth = 0; depth < kLongestPath; ++depth) {
        path = std::string(inner->name) + (path.empty() ? "" : "::") + path;
        const int owner = syntax_.scopes[at(inner->scope)].owner;
        if (owner == kNoIndex) break;
        inner = &syntax_.declarations[at(owner)];
    }
    return path;
}

/// Remarks are left out; brackets stand close to what they hold.
std::string ScopeIndex::oneLine(ByteRange range) const {
    const std::string_view all = document_.text();
    range.end = std::min(range.end, all.size());
    if (range.begin >= range.end) return {};
    const std::string_view text = all.substr(range.begin, range.size());
    std::string line;
    std::size_t end = 0;
    bool open = true;
    for (const ScriptToken& token : scriptTokens(text)) {
        const auto begin = static_cast<std::size_t>(token.position);
        const std::string_view between = text.substr(end, begin - end);
        const bool words = !line.empty() && isWordByte(line.back()) && isWordByte(token.text[0]);
        const bool blank = words || between.find_first_of(" \t\r\n") != std::string_view::npos;
        const bool close = token.is(")") || token.is(",") || token.is(";");
        if (blank && !open && !close) line += ' ';
        line += token.text;
        open = token.is("(");
        end = static_cast<std::size_t>(token.end());
    }
    return line;
}

}  // namespace korvant
