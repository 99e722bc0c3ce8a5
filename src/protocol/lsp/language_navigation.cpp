// Where things are, and new names for them.
#include <algorithm>

#include "language/rename.h"
#include "language/script_shape.h"
#include "protocol/lsp/language_server.h"

namespace korvant::lsp {

namespace {

constexpr int kRequestFailed = -32803;

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

/// What a use means, as declarations; none in remarks and for names of the library.
std::vector<int> declarationsAt(Meanings& meanings, std::size_t offset) {
    const NameUse* const use = meanings.index().useAt(offset);
    return use == nullptr ? std::vector<int>() : meanings.of(*use).declarations;
}

/// The class behind the type of a declaration.
int classOf(Meanings& meanings, int declaration) {
    const Declaration& one = meanings.index().declarations()[at(declaration)];
    if (isType(one.kind)) return declaration;
    const std::string type = isVariable(one.kind) ? meanings.oracle().typeOfVariable(declaration)
                                                  : meanings.index().oneLine(one.type);
    return meanings.classNamed(type, one.nameRange.begin);
}

bool derivesFrom(const Meanings& meanings, int type, int base) {
    const Declaration& one = meanings.index().declarations()[at(type)];
    return std::any_of(one.bases.begin(), one.bases.end(), [&](std::string_view name) {
        const int next = meanings.classNamed(name, one.whole.begin);
        return next == base ||
               (next != kNoIndex && next != type && derivesFrom(meanings, next, base));
    });
}

}  // namespace

LanguageServer::Reply LanguageServer::definition(const Json& params) {
    OpenText* text = nullptr;
    std::size_t offset = 0;
    if (!place(params, text, offset)) return {};
    Meanings& meanings = meaningsOf(*text);
    const std::vector<int> found = declarationsAt(meanings, offset);
    if (found.empty()) return {};
    const Declaration& one = meanings.index().declarations()[at(found.front())];
    return {locationJson(*text, one.nameRange), 0, {}};
}

LanguageServer::Reply LanguageServer::typeDefinition(const Json& params) {
    OpenText* text = nullptr;
    std::size_t offset = 0;
    if (!place(params, text, offset)) return {};
    Meanings& meanings = meaningsOf(*text);
    const std::vector<int> found = declarationsAt(meanings, offset);
    const int type = found.empty() ? kNoIndex : classOf(meanings, found.front());
    if (type == kNoIndex) return {};
    return {locationJson(*text, meanings.index().declarations()[at(type)].nameRange), 0, {}};
}

LanguageServer::Reply LanguageServer::implementation(const Json& params) {
    OpenText* text = nullptr;
    std::size_t offset = 0;
    if (!place(params, text, offset)) return {};
    Meanings& meanings = meaningsOf(*text);
    const std::vector<int> found = declarationsAt(meanings, offset);
    if (found.empty()) return {};
    const auto& declarations = meanings.index().declarations();
    Json list = Json::array();
    const auto add = [&](int i) {
        list.push_back(locationJson(*text, declarations[at(i)].nameRange));
    };
    const int meant = found.front();
    if (isType(declarations[at(meant)].kind)) {
        for (std::size_t i = 0; i < declarations.size(); ++i)
            if (isType(declarations[i].kind) && derivesFrom(meanings, static_cast<int>(i), meant))
                add(static_cast<int>(i));
    } else {
        for (const int i : meanings.familyOf(meant))
            if (!declarations[at(i)].body.empty()) add(i);
    }
    return {list, 0, {}};
}

LanguageServer::Reply LanguageServer::references(const Json& params) {
    OpenText* text = nullptr;
    std::size_t offset = 0;
    if (!place(params, text, offset)) return {};
    Meanings& meanings = meaningsOf(*text);
    const std::vector<int> found = declarationsAt(meanings, offset);
    Json list = Json::array();
    const bool declared =
        rpc::truthOf(rpc::memberOf(params, "context"), "includeDeclaration", true);
    if (!found.empty())
        for (const NameUse* const use : meanings.referencesTo(meanings.familyOf(found.front())))
            if (declared || use->role != NameUse::Role::declares)
                list.push_back(locationJson(*text, use->range()));
    return {list, 0, {}};
}

LanguageServer::Reply LanguageServer::highlights(const Json& params) {
    OpenText* text = nullptr;
    std::size_t offset = 0;
    if (!place(params, text, offset)) return {};
    Meanings& meanings = meaningsOf(*text);
    const std::vector<int> found = declarationsAt(meanings, offset);
    Json list = Json::array();
    if (found.empty()) return {list, 0, {}};
    using Role = NameUse::Role;
    for (const NameUse* const use : meanings.referencesTo(meanings.familyOf(found.front()))) {
        const bool writes =
            use->role == Role::writes || use->role == Role::changes || use->role == Role::declares;
        list.push_back({{"range", rangeJson(*text, use->range())}, {"kind", writes ? 3 : 2}});
    }
    return {list, 0, {}};
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
        return {symbolTree(index, outlineOf(index),
                           [&](ByteRange range) { return rangeJson(*text, range); }),
                0,
                {}};
    Json list = Json::array();
    symbolList(
        index, outlineOf(index), {}, [&](ByteRange range) { return locationJson(*text, range); },
        [](const std::string&) { return true; }, list);
    return {list, 0, {}};
}

LanguageServer::Reply LanguageServer::workspaceSymbols(const Json& params) {
    const std::string query = rpc::textOf(params, "query");
    Json list = Json::array();
    for (auto& [uri, text] : texts_) {
        const ScopeIndex& index = meaningsOf(text).index();
        symbolList(
            index, outlineOf(index), {},
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
    if (!found.refusal.empty()) return Reply::failed(kRequestFailed, found.refusal);
    const std::string name = text->document.text().substr(found.range.begin, found.range.size());
    return {{{"range", rangeJson(*text, found.range)}, {"placeholder", name}}, 0, {}};
}

LanguageServer::Reply LanguageServer::rename(const Json& params) {
    OpenText* text = nullptr;
    std::size_t offset = 0;
    if (!place(params, text, offset)) return {};
    const std::string name = rpc::textOf(params, "newName");
    const RenameResult result = renameAt(engine_, meaningsOf(*text), offset, name);
    if (!result.refusal.empty()) return Reply::failed(kRequestFailed, result.refusal);
    Json edits = Json::array();
    for (const ByteRange& edit : result.edits)
        edits.push_back({{"range", rangeJson(*text, edit)}, {"newText", name}});
    return {{{"changes", {{text->uri, std::move(edits)}}}}, 0, {}};
}

}  // namespace korvant::lsp
