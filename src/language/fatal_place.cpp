// Which part of a text its compiler does not survive.
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "language/compile_worker.h"
#include "language/scope_index.h"

namespace korvant {

namespace {

using Dies = std::function<bool(const std::string&)>;

/// Blanks of the same length, so that every place stays where it is.
void blank(std::string& text, ByteRange range) {
    for (std::size_t i = range.begin; i < std::min(range.end, text.size()); ++i)
        if (text[i] != '\n' && text[i] != '\r') text[i] = ' ';
}

std::vector<ByteRange> bodiesOf(const ScopeIndex& index) {
    std::vector<ByteRange> bodies;
    for (const Declaration& found : index.declarations())
        if (isCallable(found.kind) && found.kind != DeclarationKind::lambda &&
            found.body.size() > 2)
            bodies.push_back({found.body.begin + 1, found.body.end - 1});
    return bodies;
}

/// The text with no other bodies than the first `count` from `first` on.
std::string withBodies(std::string text, const std::vector<ByteRange>& bodies, std::size_t first,
                       std::size_t count) {
    for (std::size_t i = 0; i < bodies.size(); ++i)
        if (i < first || i >= first + count) blank(text, bodies[i]);
    return text;
}

/// The smallest number of `ends`, in order, behind which everything may be blank up to `last`.
std::size_t shortest(const std::string& text, const std::vector<ByteRange>& parts, std::size_t last,
                     const Dies& dies) {
    std::size_t low = 0, high = parts.empty() ? 0 : parts.size() - 1;
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        std::string cut = text;
        blank(cut, {parts[middle].end, last});
        if (dies(cut))
            high = middle;
        else
            low = middle + 1;
    }
    return parts.empty() ? 0 : parts[high].begin;
}

std::size_t inBody(const std::string& text, const ScopeIndex& index, ByteRange body,
                   const Dies& dies) {
    std::vector<ByteRange> statements;
    for (const Statement& statement : index.statements()) {
        const ByteRange range = statement.range;
        const bool inside = body.begin <= range.begin && range.end <= body.end;
        const bool within = !statements.empty() && range.begin < statements.back().end;
        if (inside && !within) statements.push_back(range);
    }
    return statements.empty() ? body.begin : shortest(text, statements, body.end, dies);
}

std::size_t inDeclarations(const std::string& text, const ScopeIndex& index, const Dies& dies) {
    std::vector<ByteRange> parts;
    for (const int declared : index.declaredIn(0))
        parts.push_back(index.declarations()[static_cast<std::size_t>(declared)].whole);
    return shortest(text, parts, text.size(), dies);
}

}  // namespace

std::size_t fatalPlace(const std::string& text, const Dies& dies) {
    const ScopeIndex index(text);
    const std::vector<ByteRange> bodies = bodiesOf(index);
    const std::string empty = withBodies(text, bodies, 0, 0);
    if (bodies.empty() || dies(empty)) return inDeclarations(empty, index, dies);
    std::size_t first = 0, count = bodies.size();
    while (count > 1) {
        const std::size_t half = count / 2;
        if (dies(withBodies(text, bodies, first, half))) {
            count = half;
        } else if (dies(withBodies(text, bodies, first + half, count - half))) {
            first += half;
            count -= half;
        } else {
            break;  // several bodies together
        }
    }
    return inBody(withBodies(text, bodies, first, count), index, bodies[first], dies);
}

}  // namespace korvant
