#include <algorithm>
#include <optional>

#include "language/symbols.h"
#include "language/tokens.h"

namespace korvant {

namespace {

// How far is looked for the end of what has begun, so that a broken text costs little.
constexpr std::size_t kLongestAngles = 64, kLongestHeader = 1024, kLongestList = 1024;

/// Reads declarations off the tokens without understanding statements: a type followed by a name
/// and one of the marks that follow a declared name.
class DeclarationReader {
  public:
    DeclarationReader(std::string_view text, int offset)
        : text_(text), tokens_(scriptTokens(text)), offset_(offset) {}

    std::vector<Symbol> read() {
        for (std::size_t i = 0; i < tokens_.size(); i = next(i)) {
        }
        return std::move(symbols_);
    }

  private:
    struct TypeAt {
        std::size_t end;
        std::string text;
    };

    const ScriptToken& at(std::size_t i) const {
        static const ScriptToken none;
        return i < tokens_.size() ? tokens_[i] : none;
    }

    /// Handles what begins at token `i`; the token to go on with.
    std::size_t next(std::size_t i) {
        const ScriptToken& token = at(i);
        if (token.is("{")) return open(i);
        if (token.is("}")) return close(i);
        if (token.is("(")) ++brackets_;
        if (token.is(")")) --brackets_;
        if ((token.is("class") || token.is("interface") || token.is("enum")) && at(i + 1).isWord())
            return declareType(i);
        const std::optional<TypeAt> type = typeAt(i);
        if (!type || !at(type->end).isWord() || isStatementWord(at(type->end).text)) return i + 1;
        return declare(*type, i);
    }

    std::size_t open(std::size_t i) {
        brackets_ = 0;
        owners_.push_back(std::move(pendingOwner_));
        pendingOwner_.clear();
        return pendingEnum_ ? readValues(i + 1) : i + 1;
    }

    std::size_t close(std::size_t i) {
        brackets_ = 0;
        if (!owners_.empty()) owners_.pop_back();
        return i + 1;
    }

    std::size_t declareType(std::size_t i) {
        const std::string name(at(i + 1).text);
        add(Symbol::Kind::type, at(i + 1), name, {});
        pendingEnum_ = at(i).is("enum");
        pendingOwner_ = pendingEnum_ ? std::string() : name;
        return i + 2;
    }

    std::size_t readValues(std::size_t i) {
        pendingEnum_ = false;
        bool nameNext = true;
        for (; i < tokens_.size() && !at(i).is("}"); ++i) {
            if (nameNext && at(i).isWord()) add(Symbol::Kind::value, at(i), "int", {});
            nameNext = at(i).is(",");
        }
        return i;
    }

    std::optional<TypeAt> typeAt(std::size_t i) const {
        const std::size_t begin = i;
        if (at(i).is("const")) ++i;
        if (!at(i).isWord() || isStatementWord(at(i).text)) return std::nullopt;
        ++i;
        if (at(i).is("<")) i = behindAngles(i);
        for (;;) {
            if (at(i).is("[") && at(i + 1).is("]"))
                i += 2;
            else if (at(i).is("@") || at(i).is("&"))
                ++i;
            else if (at(i).is("in") || at(i).is("out") || at(i).is("inout"))
                ++i;
            else
                break;
        }
        return TypeAt{i, textBetween(begin, i)};
    }

    /// The token behind the ">" that ends a list of types; just behind "<" when it is none.
    std::size_t behindAngles(std::size_t i) const {
        const std::size_t begin = i;
        const std::size_t end = std::min(tokens_.size(), begin + kLongestAngles);
        int depth = 0;
        for (; i < end; ++i) {
            const bool closes = at(i).is(">") || at(i).is(">>") || at(i).is(">>>");
            if (at(i).is("<"))
                ++depth;
            else if (closes)
                depth -= static_cast<int>(at(i).text.size());
            else if (!at(i).isWord() && !at(i).is(",") && !at(i).is("[") && !at(i).is("]") &&
                     !at(i).is("@"))
                break;
            if (depth <= 0) return i + 1;
        }
        return begin + 1;
    }

    std::string textBetween(std::size_t begin, std::size_t end) const {
        const ScriptToken& last = at(end - 1);
        const auto from = static_cast<std::size_t>(at(begin).position);
        const auto to = static_cast<std::size_t>(last.position) + last.text.size();
        return std::string(text_.substr(from, to - from));
    }

    bool insideFunction() const { return !owners_.empty() && owners_.back().empty(); }

    /// A type at `begin` and a name behind it.
    std::size_t declare(const TypeAt& type, std::size_t begin) {
        const std::size_t name = type.end;
        const ScriptToken& after = at(name + 1);
        const std::string plain = plainType(type.text);
        if (after.is("(") && !insideFunction()) {
            add(Symbol::Kind::function, at(name), plain, header(begin, name + 1));
        } else if (after.is("=") || after.is(";") || after.is(",") || after.is(")") ||
                   after.is("(") || after.is("{") || after.is(":")) {
            add(Symbol::Kind::variable, at(name), plain, {});
            if (!after.is(")")) addFurther(name + 1, plain);
        }
        return name + 1;
    }

    /// The names behind the commas of "int a = 1, b, c;".
    void addFurther(std::size_t i, const std::string& type) {
        const std::size_t end = std::min(tokens_.size(), i + kLongestList);
        int depth = 0;
        for (; i < end && depth >= 0 && !at(i).is(";") && !at(i).is("{"); ++i) {
            if (at(i).is("(") || at(i).is("[")) ++depth;
            if (at(i).is(")") || at(i).is("]")) --depth;
            const bool named = depth == 0 && at(i).is(",") && at(i + 1).isWord();
            if (named && (at(i + 2).is(",") || at(i + 2).is(";") || at(i + 2).is("=")))
                add(Symbol::Kind::variable, at(i + 1), type, {});
        }
    }

    /// "int f(int a, string b)" from the type at `begin` to the bracket that closes, on one line;
    /// "int f(...)" while it is being written.
    std::string header(std::size_t begin, std::size_t bracket) const {
        const std::size_t end = std::min(tokens_.size(), bracket + kLongestHeader);
        int depth = 0;
        for (std::size_t i = bracket; i < end && !at(i).is("{") && !at(i).is(";"); ++i) {
            if (at(i).is("(")) ++depth;
            if (at(i).is(")") && --depth == 0) return lineOf(begin, i + 1);
        }
        return lineOf(begin, bracket + 1) + "...)";
    }

    /// The tokens as written, with one blank for all that stood between two of them.
    std::string lineOf(std::size_t begin, std::size_t end) const {
        std::string line;
        std::size_t written = static_cast<std::size_t>(at(begin).position);
        for (std::size_t i = begin; i < end; ++i) {
            if (static_cast<std::size_t>(at(i).position) > written) line += ' ';
            line += at(i).text;
            written = static_cast<std::size_t>(at(i).position) + at(i).text.size();
        }
        return line;
    }

    void add(Symbol::Kind kind, const ScriptToken& name, std::string type,
             std::string declaration) {
        const bool ownerless = kind == Symbol::Kind::type || owners_.empty() || brackets_ > 0;
        const std::string owner = ownerless ? "" : owners_.back();
        symbols_.push_back({kind,
                            std::string(name.text),
                            std::move(type),
                            owner,
                            std::move(declaration),
                            name.position + offset_,
                            {}});
    }

    std::string_view text_;
    std::vector<ScriptToken> tokens_;
    int offset_;
    std::vector<Symbol> symbols_;
    std::vector<std::string> owners_;  ///< of every open brace: the class that it holds, or empty
    std::string pendingOwner_;
    bool pendingEnum_ = false;
    int brackets_ = 0;  ///< round ones that are open
};

constexpr std::string_view kLanguageWords[] = {
    "bool", "break",  "case",    "cast",   "class",  "const",  "continue", "default",
    "do",   "double", "else",    "enum",   "false",  "float",  "for",      "if",
    "in",   "inout",  "int",     "int16",  "int32",  "int64",  "int8",     "interface",
    "null", "out",    "private", "return", "string", "switch", "this",     "true",
    "uint", "uint16", "uint32",  "uint64", "uint8",  "void",   "while",    "xor"};

}  // namespace

std::vector<Symbol> scriptSymbols(std::string_view text, int offset) {
    return DeclarationReader(text, offset).read();
}

const std::vector<Symbol>& languageWords() {
    static const auto* words = [] {
        auto* list = new std::vector<Symbol>;
        for (const std::string_view word : kLanguageWords)
            list->push_back({Symbol::Kind::keyword, std::string(word), {}, {}, {}, -1, {}});
        return list;
    }();
    return *words;
}

std::string plainType(std::string_view type) {
    std::string plain;
    for (const ScriptToken& token : scriptTokens(type)) {
        const bool passing = token.is("const") || token.is("in") || token.is("out") ||
                             token.is("inout") || token.is("&") || token.is("@");
        if (!passing) plain += token.text;
    }
    return plain;
}

std::string elementType(const std::string& type) {
    constexpr std::string_view kArray = "array<";
    if (type.ends_with("[]")) return type.substr(0, type.size() - 2);
    if (type.starts_with(kArray) && type.ends_with(">"))
        return type.substr(kArray.size(), type.size() - kArray.size() - 1);
    return type == "string" ? "uint8" : "";
}

std::string memberOwner(const std::string& type) {
    return type != "string" && !elementType(type).empty() ? "array" : type;
}

}  // namespace korvant
