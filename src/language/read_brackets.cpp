// Brackets: which belong together, also in texts that lack some.
#include <algorithm>
#include <numeric>

#include "language/syntax_reader.h"

namespace korvant {

namespace {

/// So far is looked ahead and back for the head of a declaration, which keeps reading linear.
constexpr std::size_t kLongestHead = 256;

bool isOneOf(const ScriptToken& token, std::initializer_list<std::string_view> marks) {
    return std::any_of(marks.begin(), marks.end(),
                       [&](std::string_view mark) { return token.is(mark); });
}

}  // namespace

/// Walks over the tokens once and keeps what is open.
class SyntaxReader::Brackets {
  public:
    /// With `repairs` heads of functions and classes end the code in front of them.
    Brackets(SyntaxReader& reader, bool repairs) : reader_(reader), repairs_(repairs) {}

    /// False when braces stay open.
    bool pair() {
        for (at_ = 0; at_ < reader_.tokens_.size(); ++at_) {
            if (reader_.beginsLine(at_)) enterLine();
            meet();
        }
        bool paired = true;
        for (const OpenBracket& one : open_) {
            paired = paired && !reader_.is(one.token, "{");
            reader_.closing_[one.token] = reader_.tokens_.size();
        }
        return paired;
    }

  private:
    bool is(std::string_view what) const { return reader_.is(at_, what); }
    const ScriptToken& before() const { return at_ > 0 ? reader_.token(at_ - 1) : reader_.none_; }
    bool inBlock() const { return open_.empty() || reader_.is(open_.back().token, "{"); }

    void close() {
        lastClosed_ = open_.back().token;
        reader_.closing_[lastClosed_] = at_;
        open_.pop_back();
    }
    void closeToBlock() {
        while (!inBlock()) close();
    }

    void enterLine() {
        const std::string_view text = reader_.text_;
        const std::size_t begin = reader_.beginOf(at_);
        const auto feed = begin == 0 ? std::string_view::npos : text.rfind('\n', begin - 1);
        indent_ = begin - (feed == std::string_view::npos ? 0 : feed + 1);
        if (!inBlock() && startsAnew()) closeToBlock();
        if (repairs_) endCode();
        if (!open_.empty() && !open_.back().inside) open_.back().inside = indent_;
    }

    /// Whether the line cannot belong to the parentheses that are open: a declaration that is none
    /// of a parameter.
    bool startsAnew() const {
        if (reader_.beginsHead(at_)) return true;
        const std::size_t opener = open_.back().token;
        if (opener > 0 && reader_.is(opener - 1, "for")) return false;
        const std::size_t name = reader_.nameOfHead(at_);
        if (name == at_) return false;
        return isOneOf(reader_.token(name + 1), {"=", ";", ",", "(", "{"}) && !closes(name + 1);
    }

    /// Whether the parentheses around are closed before anything that cannot stand in them.
    bool closes(std::size_t i) const {
        int open = 0;
        for (const std::size_t end = i + kLongestHead; i < end; ++i) {
            if (open == 0 && (i >= reader_.tokens_.size() || isOneOf(reader_.token(i), {";", "{"})))
                return false;
            if (isOneOf(reader_.token(i), {"(", "[", "{"})) ++open;
            if (isOneOf(reader_.token(i), {")", "]", "}"}) && --open < 0)
                return !reader_.is(i, "}");
        }
        return true;
    }

    /// A value, a type or the name of a parameter.
    static bool endsValue(const ScriptToken& token) {
        if (token.isWord()) return token.isName() || isBuiltInType(token.text);
        return token.kind != ScriptToken::Kind::mark || isOneOf(token, {")", "]", "@", "&"});
    }

    /// Code ends in front of a head; so does a class, and code in front of a variable, where the
    /// line stands no deeper than what it would end.
    void endCode() {
        if (open_.empty()) return;
        const ScriptToken& next = reader_.token(reader_.nameOfHead(at_) + 1);
        const bool head = reader_.beginsHead(at_);
        const bool variable = reader_.nameOfHead(at_) > at_ && isOneOf(next, {"=", ";", ","});
        const auto holds = [&](const OpenBracket& one) {
            const bool flat = one.inside && *one.inside <= one.indent;
            if (!reader_.holdsDeclarations(one.token))
                return !head && (flat || one.indent < indent_);
            return flat || one.indent < indent_ || reader_.isNamespace(one.token);
        };
        while ((head || variable) && !open_.empty() && !holds(open_.back())) close();
    }

    /// A body behind parentheses that have not been closed: "f(int a {", "if (g(x) {".
    bool beginsBody() const {
        if (inBlock() || !is("{")) return false;
        if (before().is(")")) return lastClosed_ == 0 || !reader_.is(lastClosed_ - 1, "function");
        return endsValue(before());
    }

    void meet() {
        if (is("(") || is("[") || is("{")) {
            if (beginsBody()) closeToBlock();
            open_.push_back({at_, indent_, std::nullopt});
        } else if (reader_.beginsControl(at_)) {
            closeToBlock();
        } else if (is(";")) {
            while (!inBlock() &&
                   !(open_.back().token > 0 && reader_.is(open_.back().token - 1, "for")))
                close();
        } else if (is("}")) {
            closeToBlock();
            if (!open_.empty()) close();
        } else if (is(")") || is("]")) {
            const std::string_view opener = is(")") ? "(" : "[";
            if (!open_.empty() && reader_.is(open_.back().token, opener)) close();
        }
    }

    SyntaxReader& reader_;
    bool repairs_;
    std::size_t at_ = 0;
    std::size_t indent_ = 0;
    std::size_t lastClosed_ = 0;  ///< the opening bracket of what was closed last
    std::vector<OpenBracket> open_;
};

/// What is left open ends with its statement (round and square ones), with the next declaration, or
/// with the text. Only where braces are missing are heads taken for the end of the code before
/// them.
void SyntaxReader::pairBrackets() {
    for (const bool repairs : {false, true}) {
        closing_.resize(tokens_.size());
        std::iota(closing_.begin(), closing_.end(), std::size_t{0});
        if (Brackets(*this, repairs).pair()) return;
    }
}

/// The name behind what may be a type; `i` where none is.
std::size_t SyntaxReader::nameOfHead(std::size_t i) const {
    if (!mayNameType(i) && !is(i, "const") && !is(i, "::")) return i;
    std::size_t behind = behindType(i);
    if (behind > i && is(behind, "&")) ++behind;
    return behind > i && isName(behind) ? behind : i;
}

/// Whether a class or its like, or a function with a body, begins with this token.
bool SyntaxReader::beginsHead(std::size_t i) const {
    while (isOneOf(token(i),
                   {"private", "protected", "shared", "abstract", "final", "mixin", "external"}) &&
           token(i + 1).isWord())
        ++i;
    if (isOneOf(token(i), {"class", "interface", "enum", "namespace"})) return isName(i + 1);
    return beginsFunction(i);
}

/// "type name(...) {", also without a type, as of constructors; never part of any code.
bool SyntaxReader::beginsFunction(std::size_t i) const {
    std::size_t name = is(i, "~") ? i + 1 : nameOfHead(i);
    if (!isName(name) || !is(name + 1, "(")) return false;
    int open = 0;
    const std::size_t end = std::min(tokens_.size(), i + kLongestHead);
    for (std::size_t at = name + 1; at < end; ++at) {
        if (isOneOf(token(at), {";", "{", "}"})) return false;
        if (is(at, "(")) ++open;
        if (!is(at, ")") || --open > 0) continue;
        for (++at; isOneOf(token(at), {"const", "override", "final", "property", "explicit"});)
            ++at;
        return is(at, "{");
    }
    return false;
}

/// Whether a brace is that of a class, an interface or a namespace.
bool SyntaxReader::holdsDeclarations(std::size_t brace) const {
    std::size_t i = brace;
    const std::size_t first = brace > kLongestHead ? brace - kLongestHead : 0;
    while (i > first && (isName(i - 1) || isOneOf(token(i - 1), {",", ":", "::"}))) --i;
    return i > 0 && i < brace && isOneOf(token(i - 1), {"class", "interface", "namespace"});
}

bool SyntaxReader::isNamespace(std::size_t brace) const {
    std::size_t i = brace;
    while (i > 0 && (isName(i - 1) || is(i - 1, "::"))) --i;
    return i > 0 && is(i - 1, "namespace");
}

}  // namespace korvant
