// Where things are, and new names for them.
#include <algorithm>

#include "language/rename.h"
#include "language/script_shape.h"
#include "protocol/lsp/language_server.h"

namespace korvant::lsp {

namespace {

constexpr int kRequestFailed = -32803;
constexpr int kRead = 2, kWrite = 3;         // Source: the protocol's DocumentHighlightKind.
constexpr std::uint64_t kRenameMs = 10'000;  ///< a part of the places would be wrong

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

/// The class behind the type of a declaration.
int classOf(Meanings& meanings, int declaration) {
    const Declaration& one = meanings.index().declarations()[at(declaration)];
    if (isType(one.kind)) return declaration;
    const std::string type = isVariable(one.kind) ? meanings.oracle().typeOfVariable(declaration)
                                                  : meanings.index().oneLine(one.type);
    return meanings.classNamed(type, one.nameRange.begin);
}

}  // namespace

/// Without declarations in remarks and for names of the library; without a text where none is open.
LanguageServer::Target LanguageServer::targetOf(const Json& params) {
    Target target;
    std::size_t offset = 0;
    if (!place(params, target.text, offset)) return target;
    target.meanings = &meaningsOf(*target.text);
    target.use = target.meanings->index().useAt(offset);
    if (target.use != nullptr) target.declarations = target.meanings->of(*target.use).declarations;
    return target;
}

Json LanguageServer::declarationJson(const Target& target, int declaration) const {
    return locationJson(*target.text,
                        target.meanings->index().declarations()[at(declaration)].nameRange);
}

LanguageServer::Reply LanguageServer::definition(const Json& params) {
    Target target = targetOf(params);
    if (target.use != nullptr && target.declarations.empty())
        if (const int base = target.meanings->calledBySuper(*target.use); base != kNoIndex)
            target.declarations = {base};
    if (target.declarations.empty()) return {};
    return {declarationJson(target, target.declarations.front()), 0, {}};
}

LanguageServer::Reply LanguageServer::typeDefinition(const Json& params) {
    const Target target = targetOf(params);
    const int type = target.declarations.empty()
                         ? kNoIndex
                         : classOf(*target.meanings, target.declarations.front());
    return type == kNoIndex ? Reply{} : Reply{declarationJson(target, type), 0, {}};
}

LanguageServer::Reply LanguageServer::implementation(const Json& params) {
    const Target target = targetOf(params);
    if (target.declarations.empty()) return {};
    const auto& declarations = target.meanings->index().declarations();
    Json list = Json::array();
    const int meant = target.declarations.front();
    if (isType(declarations[at(meant)].kind)) {
        for (const int i : target.meanings->derivedFrom(meant))
            list.push_back(declarationJson(target, i));
    } else {
        for (const int i : target.meanings->familyOf(meant))
            if (!declarations[at(i)].body.empty()) list.push_back(declarationJson(target, i));
    }
    return {list, 0, {}};
}

LanguageServer::Reply LanguageServer::references(const Json& params) {
    const Target target = targetOf(params);
    if (target.text == nullptr) return {};
    Json list = Json::array();
    const bool declared =
        rpc::truthOf(rpc::memberOf(params, "context"), "includeDeclaration", true);
    for (const NameUse* const use : usesOf(target))
        if (declared || use->role != NameUse::Role::declares)
            list.push_back(locationJson(*target.text, use->range()));
    return {list, 0, {}};
}

LanguageServer::Reply LanguageServer::highlights(const Json& params) {
    const Target target = targetOf(params);
    if (target.text == nullptr) return {};
    Json list = Json::array();
    using Role = NameUse::Role;
    for (const NameUse* const use : usesOf(target)) {
        const bool writes =
            use->role == Role::writes || use->role == Role::changes || use->role == Role::declares;
        list.push_back(
            {{"range", rangeJson(*target.text, use->range())}, {"kind", writes ? kWrite : kRead}});
    }
    return {list, 0, {}};
}

std::vector<const NameUse*> LanguageServer::usesOf(const Target& target) const {
    if (target.declarations.empty()) return {};
    return target.meanings->referencesTo(target.meanings->familyOf(target.declarations.front()));
}

namespace {

/// Tree of the protocol's document symbols.
template <class RangeOf>
Json symbolTree(const ScopeIndex& index, const std::vector<OutlineItem>& items,
                const RangeOf& rangeOf) {
    Json list = Json::array();
    for (const OutlineItem& item : items) {
        const DeclarationKind kind = index.declarations()[at(item.declaration)].kind;
        list.push_back({{"name", item.name},
                        {"detail", item.detail},
                        {"kind", symbolKindOf(kind)},
                        {"range", rangeOf(item.whole)},
                        {"selectionRange", rangeOf(item.nameRange)},
                        {"children", symbolTree(index, item.children, rangeOf)}});
    }
    return list;
}

/// The same, flat, with the names of what holds them.
template <class LocationOf, class Wanted>
void symbolList(const ScopeIndex& index, const std::vector<OutlineItem>& items,
                const std::string& container, const LocationOf& locationOf, const Wanted& wanted,
                Json& list) {
    for (const OutlineItem& item : items) {
        const DeclarationKind kind = index.declarations()[at(item.declaration)].kind;
        if (wanted(item.name)) {
            Json one = {{"name", item.name},
                        {"kind", symbolKindOf(kind)},
                        {"location", locationOf(item.nameRange)}};
            if (!container.empty()) one["containerName"] = container;
            list.push_back(std::move(one));
        }
        symbolList(index, item.children, item.name, locationOf, wanted, list);
    }
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// All letters of `query` in their order.
bool fits(const std::string& name, const std::string& query) {
    std::size_t next = 0;
    for (const char c : name)
        if (next < query.size() && lower(c) == lower(query[next])) ++next;
    return next == query.size();
}

}  // namespace

LanguageServer::Reply LanguageServer::documentSymbols(const Json& params) {
    OpenText* const text = textOf(params);
    if (text == nullptr) return {};
    const ScopeIndex& index = meaningsOf(*text).index();
    if (hierarchical_)
        return {symbolTree(index, outlineTree(index),
                           [&](ByteRange range) { return rangeJson(*text, range); }),
                0,
                {}};
    Json list = Json::array();
    symbolList(
        index, outlineTree(index), {}, [&](ByteRange range) { return locationJson(*text, range); },
        [](const std::string&) { return true; }, list);
    return {list, 0, {}};
}

LanguageServer::Reply LanguageServer::workspaceSymbols(const Json& params) {
    const std::string query = rpc::textOf(params, "query");
    Json list = Json::array();
    for (auto& [uri, text] : texts_) {
        const ScopeIndex& index = meaningsOf(text).index();
        symbolList(
            index, outlineTree(index), {},
            [&, &open = text](ByteRange range) { return locationJson(open, range); },
            [&](const std::string& name) { return fits(name, query); }, list);
    }
    return {list, 0, {}};
}

LanguageServer::Reply LanguageServer::prepareRename(const Json& params) {
    OpenText* text = nullptr;
    std::size_t offset = 0;
    if (!place(params, text, offset)) return {};
    Meanings& meanings = meaningsOf(*text);
    const RenamePlace found = renamePlace(meanings, offset);
    if (!found.refusal.empty()) return Reply::failed(kRequestFailed, found.refusal.text());
    const std::string name = text->document.text().substr(found.range.begin, found.range.size());
    return {{{"range", rangeJson(*text, found.range)}, {"placeholder", name}}, 0, {}};
}

LanguageServer::Reply LanguageServer::rename(const Json& params) {
    OpenText* text = nullptr;
    std::size_t offset = 0;
    if (!place(params, text, offset)) return {};
    const std::string name = rpc::textOf(params, "newName");
    Meanings& meanings = meaningsOf(*text);
    meanings.oracle().allow(kRenameMs);
    const RenameResult result = renameAt(engine_, meanings, offset, name);
    if (!result.refusal.empty()) return Reply::failed(kRequestFailed, result.refusal.text());
    Json edits = Json::array();
    for (const ByteRange& edit : result.edits)
        edits.push_back({{"range", rangeJson(*text, edit)}, {"newText", name}});
    return {{{"changes", {{text->uri, std::move(edits)}}}}, 0, {}};
}

}  // namespace korvant::lsp
