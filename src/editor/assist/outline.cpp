#include "editor/assist/outline.h"

namespace korvant {

namespace {

bool isListed(DeclarationKind kind) {
    return kind == DeclarationKind::classType || kind == DeclarationKind::interfaceType ||
           kind == DeclarationKind::mixinType || kind == DeclarationKind::enumType ||
           kind == DeclarationKind::function || kind == DeclarationKind::method ||
           kind == DeclarationKind::constructor || kind == DeclarationKind::destructor;
}

OutlineEntry::Kind kindOf(DeclarationKind kind) {
    if (kind == DeclarationKind::enumType) return OutlineEntry::Kind::enumType;
    return isType(kind) ? OutlineEntry::Kind::classType : OutlineEntry::Kind::function;
}

}  // namespace

std::vector<OutlineEntry> outlineEntries(const ScopeIndex& index) {
    std::vector<OutlineEntry> entries;
    const auto& declarations = index.declarations();
    for (std::size_t i = 0; i < declarations.size(); ++i) {
        const Declaration& one = declarations[i];
        if (!isListed(one.kind)) continue;
        OutlineEntry entry;
        entry.kind = kindOf(one.kind);
        entry.name = std::string(one.name);
        entry.path = index.pathOf(static_cast<int>(i));
        entry.begin = one.whole.begin;
        entry.end = one.whole.end;
        entry.nameBegin = one.nameRange.begin;
        if (entry.kind == OutlineEntry::Kind::function) {
            entry.type = index.oneLine(one.type);
            const bool none = index.oneLine(one.parameters).size() <= 2;
            entry.name += none ? "()" : "(...)";
            if (!entries.empty() && index.classAt(one.whole.begin) >= 0) entry.depth = 1;
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

int entryAt(const std::vector<OutlineEntry>& entries, std::size_t position) {
    int found = -1;
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (position >= entries[i].begin && position < entries[i].end) found = static_cast<int>(i);
    return found;
}

std::string valueNamesOf(const ScopeIndex& index) {
    std::string names;
    for (const Declaration& one : index.declarations())
        if (isVariable(one.kind) && !one.name.empty()) names += " " + std::string(one.name);
    return names;
}

std::string typeNamesOf(const ScopeIndex& index) {
    std::string names;
    for (const Declaration& one : index.declarations())
        if (isType(one.kind)) names += (names.empty() ? "" : " ") + std::string(one.name);
    return names;
}

}  // namespace korvant
