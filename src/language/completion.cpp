#include "language/completion.h"

#include <algorithm>
#include <map>

namespace korvant {

namespace {

std::string folded(std::string_view text) {
    std::string lower(text);
    for (char& byte : lower)
        if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
    return lower;
}

}  // namespace

template <class Visit>
void SymbolTable::forEach(const Visit& visit) const {
    for (const Symbol& symbol : inScript_) visit(symbol);
    for (const Symbol& symbol : general_) visit(symbol);
}

/// The class whose body the caret is in, as far as the last class begun before it tells.
std::string SymbolTable::classAround() const {
    std::string owner;
    for (const Symbol& symbol : inScript_)
        if (symbol.position < caret_) {
            if (symbol.kind == Symbol::Kind::type) owner = symbol.name;
            if (symbol.kind == Symbol::Kind::function) owner = symbol.owner;
        }
    return owner;
}

/// The last one that is declared before the caret, else any.
const Symbol* SymbolTable::find(const std::string& name, const std::string& owner,
                                bool called) const {
    const Symbol* found = nullptr;
    forEach([&](const Symbol& symbol) {
        const bool fits = symbol.name == name && symbol.owner == owner &&
                          (symbol.kind == Symbol::Kind::function) == called;
        const bool nearer = found == nullptr || (symbol.position >= 0 && symbol.position < caret_);
        if (fits && nearer) found = &symbol;
    });
    return found;
}

std::string SymbolTable::typeOf(const std::vector<ChainLink>& chain) const {
    std::string type;
    for (std::size_t i = 0; i < chain.size(); ++i) {
        const ChainLink& link = chain[i];
        if (i == 0 && link.name == "this") {
            type = classAround();
            continue;
        }
        const Symbol* symbol = find(link.name, i == 0 ? "" : memberOwner(type), link.called);
        // Inside a class its members need no "this", and "Object(...)" makes an object.
        if (!symbol && i == 0) symbol = find(link.name, classAround(), link.called);
        if (!symbol && i == 0) symbol = find(link.name, "", false);
        if (!symbol) return {};
        const std::string element = i > 0 ? elementType(type) : std::string();
        type = symbol->type == "T" ? element : symbol->type;
        for (int index = 0; index < link.indexed; ++index) type = elementType(type);
    }
    return type;
}

std::vector<std::string> SymbolTable::completions(const WordBefore& before) const {
    if (!before.writable) return {};
    const std::string owner = before.member ? memberOwner(typeOf(before.chain)) : std::string();
    if (before.member && owner.empty()) return {};
    const std::string around = classAround();
    const std::string prefix = folded(before.word);
    std::map<std::string, std::string> names;
    forEach([&](const Symbol& symbol) {
        const bool reachable = symbol.owner == owner || (!before.member && symbol.owner == around);
        // The word that is just being written is no proposal.
        const bool itself = symbol.position >= 0 && symbol.name == before.word;
        const std::string key = folded(symbol.name);
        if (reachable && !itself && key.starts_with(prefix))
            names.emplace(key + '\0' + symbol.name, symbol.name);
    });
    std::vector<std::string> result;
    for (auto& [key, name] : names) result.push_back(std::move(name));
    return result;
}

std::vector<Symbol> SymbolTable::overloads(const WordBefore& function) const {
    std::vector<Symbol> found;
    const std::string owner = function.member ? memberOwner(typeOf(function.chain)) : std::string();
    if (function.member && owner.empty()) return found;
    const std::string around = classAround();
    forEach([&](const Symbol& symbol) {
        if (symbol.kind != Symbol::Kind::function || symbol.name != function.word) return;
        const bool reachable =
            symbol.owner == owner || (!function.member && symbol.owner == around);
        const bool known = std::any_of(found.begin(), found.end(), [&](const Symbol& other) {
            return other.declaration == symbol.declaration;
        });
        if (reachable && !known) found.push_back(symbol);
    });
    return found;
}

ParameterPlace parameterPlace(const std::string& declaration, int argument) {
    const auto open = declaration.find('(');
    const auto close = declaration.rfind(')');
    if (open == std::string::npos || close == std::string::npos || close <= open + 1) return {};
    std::size_t begin = open + 1;
    int depth = 0;
    for (std::size_t i = begin; i <= close; ++i) {
        const char byte = declaration[i];
        if (byte == '(' || byte == '<') ++depth;
        const bool ends = i == close || (byte == ',' && depth == 0);
        if (byte == ')' || byte == '>') --depth;
        if (!ends) continue;
        if (argument-- == 0) return {static_cast<int>(begin), static_cast<int>(i)};
        begin = std::min(declaration.find_first_not_of(' ', i + 1), close);
    }
    return {};
}

}  // namespace korvant
