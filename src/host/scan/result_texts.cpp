#include "host/scan/result_texts.h"

#include <algorithm>
#include <unordered_set>

#include "host/scan/source_tokens.h"

namespace korvant {

namespace {

constexpr std::size_t kMostInText = std::size_t{1} << 22;
constexpr std::size_t kMostPlaces = 100;
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

constexpr std::string_view kShared[] = {"StrToUpper", "StrToLower", "StrSubstring", "StrInsert"};
/// Asks for a text where it offers one, and for a number otherwise.
constexpr std::string_view kPrompt = "Prompt";
/// The one of property objects, which has a text of its own.
constexpr std::string_view kMethodPrompt = "prompt";

template <class Range>
bool holds(const Range& words, std::string_view word) {
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

/// Words before a parenthesis that call nothing, and before a name that declare nothing.
bool isKeyword(std::string_view word) {
    static constexpr std::string_view kWords[] = {"return", "if",   "while", "for", "switch",
                                                  "case",   "else", "in",    "is",  "and",
                                                  "or",     "xor",  "not",   "do"};
    return holds(kWords, word);
}

/// How tightly an operator binds that a text may stand before; 0 for everything that ends one of
/// its operands.
int bindingOf(const TokenList& tokens, std::size_t i) {
    for (const char sign : {'*', '/', '%'})
        if (tokens.isSymbol(i, sign)) return 3;
    for (const char sign : {'+', '-'})
        if (tokens.isSymbol(i, sign)) return 2;
    for (const char sign : {'<', '>', kCompare})
        if (tokens.isSymbol(i, sign)) return 1;
    return 0;
}

enum class Store : std::uint8_t { none, result, prompt };

class ResultCheck {
  public:
    explicit ResultCheck(const TokenList& tokens) : tokens_(tokens) {}

    /// Tokens of calls that are read too late, each with the call that overwrites it.
    std::vector<std::pair<std::size_t, std::size_t>> run() {
        pairBrackets();
        collectTexts();
        collectCalls();
        std::vector<std::pair<std::size_t, std::size_t>> found;
        if (calls_.size() < 2) return found;
        for (const std::size_t call : calls_) {
            if (found.size() == kMostPlaces) break;
            const std::size_t writer = overwriterOf(call);
            if (writer != kNone) found.emplace_back(call, writer);
        }
        return found;
    }

  private:
    bool opens(std::size_t i) const {
        return tokens_.isSymbol(i, '(') || tokens_.isSymbol(i, '[') || tokens_.isSymbol(i, '{');
    }
    bool closes(std::size_t i) const {
        return tokens_.isSymbol(i, ')') || tokens_.isSymbol(i, ']') || tokens_.isSymbol(i, '}');
    }

    void pairBrackets() {
        partner_.assign(tokens_.size(), kNone);
        around_.assign(tokens_.size(), kNone);
        std::vector<std::size_t> open;
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (closes(i) && !open.empty()) {
                partner_[i] = open.back();
                partner_[open.back()] = i;
                open.pop_back();
            }
            around_[i] = open.empty() ? kNone : open.back();
            if (opens(i)) open.push_back(i);
        }
    }

    /// Names that are declared as texts somewhere.
    void collectTexts() {
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (!tokens_.isWord(i, "string")) continue;
            std::size_t name = i + 1;
            while (tokens_.isSymbol(name, '@') || tokens_.isSymbol(name, '&') ||
                   tokens_.isWord(name, "in"))
                ++name;
            if (tokens_.isName(name)) texts_.insert(tokens_.text(name));
        }
    }

    void collectCalls() {
        stores_.assign(tokens_.size(), Store::none);
        for (std::size_t i = 0; i + 1 < tokens_.size(); ++i) {
            const Store store = storeOf(i);
            if (store == Store::none) continue;
            stores_[i] = store;
            calls_.push_back(i);
        }
    }

    Store storeOf(std::size_t i) const {
        if (!tokens_.isName(i) || !tokens_.isSymbol(i + 1, '(') || partner_[i + 1] == kNone)
            return Store::none;
        const std::string_view name = tokens_.text(i);
        const bool member = i > 0 && tokens_.isSymbol(i - 1, '.');
        if (member) return name == kMethodPrompt && offersText(i + 1) ? Store::prompt : Store::none;
        const bool declared = i > 0 && tokens_.isName(i - 1) && !isKeyword(tokens_.text(i - 1));
        if (declared || (name == kPrompt ? !offersText(i + 1) : !holds(kShared, name)))
            return Store::none;
        return Store::result;
    }

    /// The second argument of the call that opens here is a text, as far as can be seen.
    bool offersText(std::size_t open) const {
        bool second = false;
        for (std::size_t i = open + 1; i < partner_[open]; ++i) {
            if (around_[i] == open && tokens_.isSymbol(i, ',')) second = true;
            if (!second) continue;
            if (tokens_[i].kind == Token::Kind::text) return true;
            if (tokens_.isName(i) && texts_.count(tokens_.text(i)) != 0) return true;
        }
        return false;
    }

    /// A call that writes the same text in [first, behind).
    std::size_t writerIn(Store store, std::size_t first, std::size_t behind) const {
        auto at = std::lower_bound(calls_.begin(), calls_.end(), first);
        for (; at != calls_.end() && *at < behind; ++at)
            if (stores_[*at] == store) return *at;
        return kNone;
    }

    /// What the call is the whole of: with "@" and parentheses that do nothing.
    void widen(std::size_t& first, std::size_t& behind) const {
        for (;;) {
            if (first == 0) return;
            const std::size_t before = first - 1;
            if (tokens_.isSymbol(before, '@') || tokens_.isSymbol(before, kScope)) {
                first = before;
            } else if (tokens_.isSymbol(before, '(') && partner_[before] == behind &&
                       !isCall(before)) {
                first = before;
                ++behind;
            } else if (const std::size_t open = choiceAround(first, behind); open != kNone) {
                first = open;
                behind = partner_[open] + 1;
            } else {
                return;
            }
        }
    }

    /// The parenthesis of "(condition ? a : b)" when one of the two stands here. A choice between
    /// this and a constant is a copy.
    std::size_t choiceAround(std::size_t first, std::size_t behind) const {
        const std::size_t open = around_[first];
        if (open == kNone || !tokens_.isSymbol(open, '(') || isCall(open)) return kNone;
        const std::size_t close = partner_[open];
        std::size_t other = behind + 1, otherEnd = close;
        if (tokens_.isSymbol(first - 1, ':') && behind == close) {
            otherEnd = other = first - 1;
            while (other > open && !(around_[other] == open && tokens_.isSymbol(other, '?')))
                --other;
            ++other;
        } else if (!tokens_.isSymbol(first - 1, '?') || !tokens_.isSymbol(behind, ':')) {
            return kNone;
        }
        const bool constant = otherEnd == other + 1 && tokens_[other].kind == Token::Kind::text;
        return constant || other <= open + 1 ? kNone : open;
    }

    bool isCall(std::size_t open) const {
        if (open == 0) return false;
        const std::size_t before = open - 1;
        if (tokens_.isName(before)) return !isKeyword(tokens_.text(before));
        return tokens_.isSymbol(before, '>') || tokens_.isSymbol(before, ']') ||
               tokens_.isSymbol(before, ')');
    }

    std::size_t overwriterOf(std::size_t call) const {
        std::size_t first = call;
        std::size_t behind = partner_[call + 1] + 1;
        widen(first, behind);
        if (bindingOf(tokens_, behind) != 0) return byOperand(call, first, behind);
        return byList(call, first, behind);
    }

    /// The left operand is read when the right one has been computed.
    std::size_t byOperand(std::size_t call, std::size_t first, std::size_t behind) const {
        const int binding = bindingOf(tokens_, behind);
        if (first > 0 && bindingOf(tokens_, first - 1) >= binding) return kNone;
        std::size_t end = behind + 1;
        for (; end < tokens_.size() && !endsOperand(end, behind + 1, binding); ++end)
            if (opens(end) && partner_[end] != kNone) end = partner_[end];
        return writerIn(stores_[call], behind + 1, end);
    }

    bool endsOperand(std::size_t i, std::size_t begin, int binding) const {
        if (closes(i)) return true;
        for (const char sign : {',', ';', '?', ':', '&', '|', '^', kAssign})
            if (tokens_.isSymbol(i, sign)) return true;
        const int other = bindingOf(tokens_, i);
        return i > begin && other != 0 && other <= binding;
    }

    /// Arguments are computed from last to first, elements of a list from first to last, and all
    /// are read when all are there.
    std::size_t byList(std::size_t call, std::size_t first, std::size_t behind) const {
        const std::size_t open = around_[first];
        if (first == 0 || open == kNone || partner_[open] == kNone) return kNone;
        const bool whole = (first - 1 == open || tokens_.isSymbol(first - 1, ',')) &&
                           (behind == partner_[open] || tokens_.isSymbol(behind, ','));
        if (!whole) return kNone;
        if (tokens_.isSymbol(open, '{')) return writerIn(stores_[call], behind, partner_[open]);
        if (!tokens_.isSymbol(open, '(') || !isCall(open)) return kNone;
        return writerIn(stores_[call], open + 1, first);
    }

    const TokenList& tokens_;
    std::vector<std::size_t> partner_;  ///< of brackets
    std::vector<std::size_t> around_;   ///< the bracket that a token stands in
    std::vector<std::size_t> calls_;    ///< ascending
    std::vector<Store> stores_;
    std::unordered_set<std::string_view> texts_;
};

bool mayMeet(std::string_view text) {
    std::size_t count = 0;
    for (const std::string_view word :
         {std::string_view("Str"), kPrompt, std::string_view("prompt")})
        for (auto at = text.find(word); at != std::string_view::npos && count < 2;
             at = text.find(word, at + 1))
            ++count;
    return count >= 2;
}

}  // namespace

std::vector<ScanRefusal> findOverwrittenResults(std::string_view text) {
    std::vector<ScanRefusal> places;
    if (!mayMeet(text)) return places;
    const auto tokens = TokenList::of(text, kMostInText);
    if (!tokens) return places;
    std::size_t at = 0, lineBegin = 0;
    std::int32_t row = 1;
    for (const auto& [call, writer] : ResultCheck(*tokens).run()) {
        for (const std::size_t place = (*tokens)[call].begin; at < place; ++at) {
            if (text[at] != '\n') continue;
            ++row;
            lineBegin = at + 1;
        }
        places.push_back({"The text that " + std::string(tokens->text(call)) +
                              " returns is read after " + std::string(tokens->text(writer)) +
                              " has overwritten it; assign it to a string first",
                          row, static_cast<std::int32_t>(at - lineBegin + 1)});
    }
    return places;
}

}  // namespace korvant
