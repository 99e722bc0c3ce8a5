#include "debug/declared_variables.h"

#include <algorithm>

namespace korvant {

/// Those of nameless functions inside it are not its own.
const std::vector<int>& DeclaredVariables::ofFunction(int function) {
    if (byFunction_.empty())
        for (std::size_t i = 0; i < index_.declarations().size(); ++i) {
            const Declaration& declaration = index_.declarations()[i];
            if (declaration.kind != DeclarationKind::local &&
                declaration.kind != DeclarationKind::parameter)
                continue;
            int scope = declaration.scope;
            const auto& scopes = index_.scopes();
            const auto at = [&](int which) -> const Scope& {
                return scopes[static_cast<std::size_t>(which)];
            };
            while (scope > 0 && at(scope).kind != Scope::Kind::function) scope = at(scope).parent;
            byFunction_[at(scope).owner].push_back(static_cast<int>(i));
        }
    return byFunction_[function];
}

std::optional<DeclaredVariables::Seen> DeclaredVariables::seenAt(std::int32_t line,
                                                                 std::int32_t column,
                                                                 std::string_view name,
                                                                 std::size_t nth,
                                                                 std::size_t count) {
    if (line < 1 || column < 1) return std::nullopt;
    const std::size_t place = index_.document().offsetOf(
        {static_cast<std::uint32_t>(line - 1), static_cast<std::uint32_t>(column - 1)});
    const int function = index_.functionAt(place);
    if (function == kNoIndex) return std::nullopt;
    std::vector<const Declaration*> named;
    for (const int i : ofFunction(function)) {
        const Declaration& declaration = index_.declarations()[static_cast<std::size_t>(i)];
        if (declaration.name == name) named.push_back(&declaration);
    }
    if (named.size() != count || nth >= count) return std::nullopt;
    const Declaration& declaration = *named[nth];
    if (declaration.kind == DeclarationKind::parameter) return Seen::yes;
    const Scope& scope = index_.scopes()[static_cast<std::size_t>(declaration.scope)];
    if (!scope.range.contains(place)) return Seen::no;
    return declaration.nameRange.end <= place ? Seen::yes : Seen::declaredThere;
}

}  // namespace korvant
