#include "language/script_shape.h"

#include <algorithm>
#include <map>

namespace korvant {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

bool inOutline(DeclarationKind kind) {
    return kind != DeclarationKind::local && kind != DeclarationKind::parameter &&
           kind != DeclarationKind::lambda && kind != DeclarationKind::accessor;
}

void addOutline(const ScopeIndex& index, int scope, std::vector<OutlineItem>& items) {
    for (const int i : index.declaredIn(scope)) {
        const Declaration& one = index.declarations()[at(i)];
        if (!inOutline(one.kind) || one.name.empty()) continue;
        OutlineItem item;
        item.declaration = i;
        item.name = (one.kind == DeclarationKind::destructor ? "~" : "") + std::string(one.name);
        item.detail = index.oneLine(one.parameters.empty() ? one.type : one.parameters);
        item.whole = one.whole;
        item.nameRange = one.nameRange;
        item.whole.begin = std::min(item.whole.begin, item.nameRange.begin);
        item.whole.end = std::max(item.whole.end, item.nameRange.end);
        const bool holds = isType(one.kind) || one.kind == DeclarationKind::nameSpace;
        if (holds && one.inner != kNoIndex) addOutline(index, one.inner, item.children);
        items.push_back(std::move(item));
    }
}

/// Walks the tokens of a text line by line and says how deep each line begins.
class Indenter {
  public:
    explicit Indenter(const ScopeIndex& index)
        : text_(index.document()), tokens_(scriptTokens(text_.text(), Comments::keep)) {}

    /// Of every line; -1 for one that begins inside a text or a remark.
    std::vector<int> depths() {
        std::vector<int> depths(text_.lineCount(), 0);
        for (std::uint32_t line = 0; line < text_.lineCount(); ++line) depths[line] = enter(line);
        return depths;
    }

  private:
    struct Bracket {
        char sign = '{';
        int depth = 0;  ///< of what stands inside
        bool isSwitch = false;
        bool inCase = false;
    };

    const ScriptToken* peek() const { return next_ < tokens_.size() ? &tokens_[next_] : nullptr; }

    int inside() const { return open_.empty() ? 0 : open_.back().depth; }

    int enter(std::uint32_t line) {
        const auto begin = static_cast<int>(text_.lineStart(line));
        const auto end = static_cast<int>(text_.lineRange(line).end);
        const bool within = next_ > 0 && tokens_[next_ - 1].end() > begin;
        const ScriptToken* const first = peek();
        if (first == nullptr || first->position > end) return within ? -1 : 0;
        const int depth = within ? inside() : depthOf(*first);
        while (peek() != nullptr && peek()->position <= end) take(*peek(), depth);
        return within ? -1 : depth;
    }

    int depthOf(const ScriptToken& first) {
        const bool closes = first.is("}") || first.is(")") || first.is("]");
        if (closes && !open_.empty()) return std::max(0, open_.back().depth - 1);
        int depth = inside();
        if (!open_.empty() && open_.back().isSwitch) {
            const bool label = first.is("case") || first.is("default");
            if (!label && open_.back().inCase) ++depth;
        }
        const bool brace = first.is("{");
        if (continues_ && !brace && first.kind != ScriptToken::Kind::comment) ++depth;
        return depth;
    }

    void take(const ScriptToken& token, int depth) {
        ++next_;
        if (token.kind == ScriptToken::Kind::comment) return;
        if (token.is("switch")) switchSeen_ = true;
        if (token.is("{") || token.is("(") || token.is("[")) {
            // Several that open on one line are one step.
            const bool same = !open_.empty() && token.text[0] != '{' && open_.back().depth > depth;
            open_.push_back({token.text[0], same ? open_.back().depth : depth + 1,
                             token.is("{") && switchSeen_, false});
            if (token.is("{")) switchSeen_ = false;
        } else if ((token.is("}") || token.is(")") || token.is("]")) && !open_.empty()) {
            open_.pop_back();
        } else if (!open_.empty() && open_.back().isSwitch &&
                   (token.is("case") || token.is("default"))) {
            open_.back().inCase = true;
        }
        const bool inParentheses = !open_.empty() && open_.back().sign != '{';
        continues_ = !inParentheses && !token.is(";") && !token.is("{") && !token.is("}") &&
                     !token.is(":") && !token.is(",");
    }

    const TextDocument& text_;
    std::vector<ScriptToken> tokens_;
    std::size_t next_ = 0;
    std::vector<Bracket> open_;
    bool continues_ = false;
    bool switchSeen_ = false;
};

bool isBlank(char byte) {
    return byte == ' ' || byte == '\t';
}

}  // namespace

std::vector<OutlineItem> outlineTree(const ScopeIndex& index) {
    std::vector<OutlineItem> items;
    addOutline(index, 0, items);
    return items;
}

std::vector<FoldedLines> foldingOf(const ScopeIndex& index) {
    const TextDocument& text = index.document();
    std::map<std::uint32_t, FoldedLines> byLine;
    std::vector<std::uint32_t> open;
    const auto lineAt = [&](int offset) {
        return text.lineOf(static_cast<std::size_t>(std::max(0, offset)));
    };
    for (const ScriptToken& remark : index.remarks()) {
        const std::uint32_t first = lineAt(remark.position), last = lineAt(remark.end() - 1);
        if (last > first) byLine.emplace(first, FoldedLines{first, last, true});
    }
    for (const ScriptToken& token : index.tokens()) {
        if (token.is("{")) open.push_back(lineAt(token.position));
        if (!token.is("}") || open.empty()) continue;
        const std::uint32_t line = lineAt(token.position);
        if (line > open.back() + 1)
            byLine.emplace(open.back(), FoldedLines{open.back(), line - 1, false});
        open.pop_back();
    }
    std::vector<FoldedLines> folds;
    for (const auto& [line, fold] : byLine) folds.push_back(fold);
    return folds;
}

std::vector<ByteRange> selectionsAt(const ScopeIndex& index, std::size_t offset) {
    std::vector<ByteRange> ranges;
    if (const NameUse* const use = index.useAt(offset)) ranges.push_back(use->range());
    for (const Statement& statement : index.statements())
        if (statement.range.begin <= offset && offset <= statement.range.end)
            ranges.push_back(statement.range);
    for (const Scope& scope : index.scopes())
        if (scope.range.begin <= offset && offset <= scope.range.end) ranges.push_back(scope.range);
    for (const Declaration& one : index.declarations())
        if (one.whole.begin <= offset && offset <= one.whole.end) ranges.push_back(one.whole);
    ranges.push_back({0, index.document().size()});
    std::sort(ranges.begin(), ranges.end(),
              [](ByteRange left, ByteRange right) { return left.size() < right.size(); });
    std::vector<ByteRange> nested;
    for (const ByteRange& range : ranges) {
        const bool around = nested.empty() ||
                            (range.begin <= nested.back().begin && range.end >= nested.back().end &&
                             range.size() > nested.back().size());
        if (around && (!range.empty() || index.document().size() == 0)) nested.push_back(range);
    }
    if (nested.empty()) nested.push_back({0, index.document().size()});
    return nested;
}

std::vector<BlankEdit> indentationEdits(const ScopeIndex& index, std::uint32_t first,
                                        std::uint32_t last) {
    const TextDocument& text = index.document();
    const std::vector<int> depths = Indenter(index).depths();
    std::vector<BlankEdit> edits;
    for (std::uint32_t line = first; line <= last && line < text.lineCount(); ++line) {
        if (depths[line] < 0) continue;
        const ByteRange range = text.lineRange(line);
        std::size_t begin = range.begin;
        while (begin < range.end && isBlank(text.text()[begin])) ++begin;
        const int depth = begin == range.end ? 0 : depths[line];
        std::string blanks(static_cast<std::size_t>(depth) * 4, ' ');
        if (text.text().compare(range.begin, begin - range.begin, blanks) != 0)
            edits.push_back({{range.begin, begin}, std::move(blanks)});
    }
    return edits;
}

}  // namespace korvant
