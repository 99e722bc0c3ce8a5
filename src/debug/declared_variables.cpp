#include "debug/declared_variables.h"

#include <algorithm>

namespace korvant {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

char before(std::string_view text, std::size_t place) {
    const auto at = text.substr(0, place).find_last_not_of(kBlanks);
    return at == std::string_view::npos ? '\0' : text[at];
}

char behind(std::string_view text, std::size_t place) {
    const auto at = text.find_first_not_of(kBlanks, place);
    return at == std::string_view::npos ? '\0' : text[at];
}

/// The word that ends before a place; empty: something else does.
std::string_view wordBefore(std::string_view text, std::size_t place) {
    const auto last = text.substr(0, place).find_last_not_of(kBlanks);
    if (last == std::string_view::npos || !isWordByte(text[last])) return {};
    std::size_t first = last;
    while (first > 0 && isWordByte(text[first - 1])) --first;
    return text.substr(first, last + 1 - first);
}

std::string_view wordAt(std::string_view text, std::size_t place) {
    std::size_t end = place;
    while (end < text.size() && isWordByte(text[end])) ++end;
    return text.substr(place, end - place);
}

/// Whether a place stands among the arguments of a call, in no bracket inside them.
bool amongArguments(std::string_view text, std::size_t place) {
    int depth = 0;
    for (std::size_t i = place; i-- > 0;) {
        const char c = text[i];
        if (c == ')' || c == ']') ++depth;
        if (c == ';' || c == '{' || c == '}') return false;
        if ((c != '(' && c != '[') || depth-- > 0) continue;
        const std::string_view word = wordBefore(text, i);
        return c == '(' && !word.empty() &&
               !isOneOf(word, {"if", "while", "for", "switch", "return", "and", "or", "not"});
    }
    return false;
}

}  // namespace

bool isPlainType(std::string_view word) {
    return isOneOf(word, {"int", "int8", "int16", "int32", "int64", "uint", "uint8", "uint16",
                          "uint32", "uint64", "float", "double", "bool"});
}

DeclaredVariables::DeclaredVariables(std::string text) : index_(std::move(text)) {
    for (std::size_t i = 0; i < index_.declarations().size(); ++i) {
        const Declaration& declared = index_.declarations()[i];
        if (declared.kind != DeclarationKind::local && declared.kind != DeclarationKind::parameter)
            continue;
        Variables& own = byFunction_[index_.functionAt(declared.nameRange.begin)];
        own.all.push_back(static_cast<int>(i));
        own.named[declared.name].push_back(static_cast<int>(i));
    }
    for (const Statement& statement : index_.statements())
        begins_.emplace(statement.range.begin, &statement);
    for (const auto& [function, variables] : byFunction_)
        for (const int variable : variables.all) collectDoubtful(function, variable);
    collectDeclaredBefore();
}

std::int32_t DeclaredVariables::lineOf(std::size_t place) const {
    return static_cast<std::int32_t>(index_.document().lineOf(place)) + 1;
}

std::size_t DeclaredVariables::placeOf(std::int32_t line, std::int32_t column) const {
    return index_.document().offsetOf({static_cast<std::uint32_t>(std::max(line, 1) - 1),
                                       static_cast<std::uint32_t>(std::max(column, 1) - 1)});
}

/// Those of nameless functions inside it are not its own.
const DeclaredVariables::Variables& DeclaredVariables::ofFunction(int function) const {
    static const Variables none;
    const auto found = byFunction_.find(function);
    return found == byFunction_.end() ? none : found->second;
}

std::optional<DeclaredVariables::Seen> DeclaredVariables::seenAt(std::int32_t line,
                                                                 std::int32_t column,
                                                                 std::string_view name,
                                                                 std::size_t nth,
                                                                 std::size_t count) const {
    if (line < 1 || column < 1) return std::nullopt;
    std::size_t place = placeOf(line, column);
    int function = index_.functionAt(place);
    // The last statement of a function is the place behind its brace.
    if (place > 0 && text()[place - 1] == '}' && index_.functionAt(place - 1) != function)
        function = index_.functionAt(--place);
    const Variables& own = ofFunction(function);
    const auto named = own.named.find(name);
    if (function == kNoIndex || named == own.named.end() || named->second.size() != count ||
        nth >= count)
        return std::nullopt;
    const Declaration& variable = declaration(named->second[nth]);
    if (variable.kind == DeclarationKind::parameter) return Seen::yes;
    const Scope& scope = index_.scopes()[static_cast<std::size_t>(variable.scope)];
    if (!scope.range.contains(place)) return Seen::no;
    return variable.nameRange.end <= place ? Seen::yes : Seen::declaredThere;
}

int DeclaredVariables::meantBy(std::string_view name, std::size_t offset) const {
    const Variables& own = ofFunction(index_.functionAt(offset));
    const auto named = own.named.find(name);
    if (named != own.named.end())
        for (const int variable : named->second)
            if (declaration(variable).nameRange.begin == offset) return variable;
    return index_.variableAt(name, offset);
}

/// Of a type that has no constructor, and without a value.
bool DeclaredVariables::isPlain(const Declaration& variable) const {
    if (variable.kind != DeclarationKind::local || variable.setFrom != variable.nameRange.end)
        return false;
    const std::string type = index_.oneLine(variable.type);
    if (isPlainType(type)) return true;
    const std::vector<int> meant = index_.meaningsOf(type, variable.type.begin);
    return meant.size() == 1 && declaration(meant.front()).kind == DeclarationKind::enumType;
}

/// A name that is read alone does not count, but one that is handed to a function does.
bool DeclaredVariables::maySet(const NameUse& use) const {
    if (use.role == NameUse::Role::writes || use.role == NameUse::Role::changes) return true;
    if (use.role != NameUse::Role::reads) return false;
    const std::string_view ends = ",)";
    const std::string_view begins = "(,:";
    return ends.find(behind(text(), use.range().end)) != std::string_view::npos &&
           begins.find(before(text(), use.begin)) != std::string_view::npos &&
           amongArguments(text(), use.begin);
}

/// The innermost one; null: none. A nameless function stands inside a statement.
const Statement* DeclaredVariables::statementAround(std::size_t place) const {
    constexpr int kMostInside = 1000;
    auto at = begins_.upper_bound(place);
    for (int passed = 0; at != begins_.begin() && passed < kMostInside; ++passed)
        if ((--at)->second->range.contains(place)) return at->second;
    return nullptr;
}

/// "name = ..." or "f(name)" as a statement of the block with the declaration, under no condition.
bool DeclaredVariables::setsAlways(const Statement& statement, const NameUse& use,
                                   int scope) const {
    const char previous = before(text(), statement.range.begin);
    const bool afterOther = previous == ';' || previous == '{' || previous == '}';
    const bool sets = use.role == NameUse::Role::writes ? use.begin == statement.range.begin
                                                        : use.role == NameUse::Role::reads;
    return sets && afterOther && statement.scope == scope;
}

DeclaredVariables::Valueless DeclaredVariables::namedIn(int function, int variable) const {
    const std::string_view name = declaration(variable).name;
    const std::vector<int>& namesakes = ofFunction(function).named.at(name);
    const auto place = std::find(namesakes.begin(), namesakes.end(), variable);
    return {name, static_cast<std::size_t>(place - namesakes.begin()), namesakes.size()};
}

void DeclaredVariables::collectDoubtful(int function, int variable) {
    const Declaration& declared = declaration(variable);
    if (!isPlain(declared)) return;
    std::set<std::size_t> setters;
    for (const NameUse* const use : index_.usesOf(declared.name)) {
        if (use->begin < declared.nameRange.end || use->member || use->qualified || !maySet(*use) ||
            index_.variableAt(declared.name, use->begin) != variable)
            continue;
        const Statement* const statement = statementAround(use->begin);
        // Where it stands before all others, the text tells.
        if (statement == nullptr) return;
        if (setters.empty() && setsAlways(*statement, *use, declared.scope)) return;
        setters.insert(statement->range.begin);
    }
    if (setters.empty()) return;
    std::vector<Valueless>& all = doubtful_[function];
    for (const std::size_t setter : setters) setters_[setter].push_back(all.size());
    all.push_back(namedIn(function, variable));
}

/// What begins a loop is passed more often than the declaration before it.
bool DeclaredVariables::isRepeated(std::size_t begin) const {
    return wordAt(text(), begin) == "while" || wordBefore(text(), begin) == "do";
}

void DeclaredVariables::collectDeclaredBefore() {
    std::map<std::size_t, std::vector<int>> plain;  // by where the declaration begins
    for (const auto& [function, variables] : byFunction_)
        for (const int variable : variables.all)
            if (isPlain(declaration(variable)))
                plain[declaration(variable).whole.begin].push_back(variable);
    std::vector<int> waiting;
    for (const auto& [begin, statement] : begins_) {
        const auto declares = plain.find(begin);
        if (declares != plain.end()) {
            waiting.insert(waiting.end(), declares->second.begin(), declares->second.end());
            continue;
        }
        // The head of a "for" has a scope of its own.
        for (const int variable : waiting)
            if (declaration(variable).scope == statement->scope && !isRepeated(begin))
                noteDeclaredBefore(begin, variable);
        waiting.clear();
    }
}

void DeclaredVariables::noteDeclaredBefore(std::size_t place, int variable) {
    const int function = index_.functionAt(declaration(variable).nameRange.begin);
    const Valueless named = namedIn(function, variable);
    declaredBefore_[place].push_back(named);
    const auto doubtful = doubtful_.find(function);
    if (doubtful == doubtful_.end()) return;
    for (const Valueless& one : doubtful->second)
        if (one.name == named.name && one.nth == named.nth) doubtfulBefore_.insert(place);
}

const std::vector<DeclaredVariables::Valueless>& DeclaredVariables::doubtfulAt(
    std::int32_t line, std::int32_t column) const {
    static const std::vector<Valueless> none;
    const auto found = doubtful_.find(index_.functionAt(placeOf(line, column)));
    return found == doubtful_.end() ? none : found->second;
}

const std::vector<std::size_t>& DeclaredVariables::setAt(std::int32_t line,
                                                         std::int32_t column) const {
    static const std::vector<std::size_t> none;
    // The condition behind a loop's body stands inside what the text takes for a statement.
    const Statement* const statement = statementAround(placeOf(line, column));
    const auto found = statement ? setters_.find(statement->range.begin) : setters_.end();
    return found == setters_.end() ? none : found->second;
}

const std::vector<DeclaredVariables::Valueless>& DeclaredVariables::declaredBefore(
    std::int32_t line, std::int32_t column) const {
    static const std::vector<Valueless> none;
    const Statement* const statement = statementAround(placeOf(line, column));
    const auto found =
        statement ? declaredBefore_.find(statement->range.begin) : declaredBefore_.end();
    return found == declaredBefore_.end() ? none : found->second;
}

std::vector<std::int32_t> DeclaredVariables::linesBehindDeclarations(bool ofDoubtfulAlone) const {
    std::set<std::int32_t> lines;
    for (const auto& [place, variables] : declaredBefore_)
        if (!ofDoubtfulAlone || doubtfulBefore_.contains(place)) lines.insert(lineOf(place));
    return {lines.begin(), lines.end()};
}

std::vector<std::int32_t> DeclaredVariables::doubtfulLines() const {
    std::set<std::int32_t> lines;
    const auto add = [&](std::size_t place) { lines.insert(lineOf(place)); };
    for (const auto& [setter, variables] : setters_) add(setter);
    for (const auto& [function, variables] : doubtful_) {
        const ByteRange body = declaration(function).body;
        for (auto at = begins_.lower_bound(body.begin); at != begins_.end() && at->first < body.end;
             ++at) {
            const std::size_t place = at->first;
            if (index_.functionAt(place) != function) continue;
            add(place);
            // Declarations without a value have no code.
            const auto plain = [&](int i) {
                return declaration(i).whole.begin == place && isPlain(declaration(i));
            };
            const std::vector<int>& own = ofFunction(function).all;
            if (std::none_of(own.begin(), own.end(), plain)) break;
        }
    }
    return {lines.begin(), lines.end()};
}

}  // namespace korvant
