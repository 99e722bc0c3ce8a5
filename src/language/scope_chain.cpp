#include "language/scope_chain.h"

namespace korvant {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

class Chain {
  public:
    Chain(const Meanings& meanings, ByteRange range)
        : meanings_(meanings),
          index_(meanings.index()),
          next_(index_.tokenAt(range.begin)),
          end_(range.end) {}

    int type() {
        int type = is("this") ? index_.classAt(begin()) : kNoIndex;
        if (is("this"))
            ++next_;
        else
            type = linkOf(kNoIndex);
        while (type != kNoIndex && is(".")) {
            ++next_;
            type = linkOf(type);
        }
        const bool whole = type != kNoIndex && !inside();
        return whole && holdsMembers(index_.declarations()[at(type)].kind) ? type : kNoIndex;
    }

  private:
    static bool holdsMembers(DeclarationKind kind) {
        return kind == DeclarationKind::classType || kind == DeclarationKind::interfaceType;
    }
    const ScriptToken& token() const { return index_.tokens()[next_]; }
    std::size_t begin() const { return static_cast<std::size_t>(token().position); }
    bool inside() const { return next_ < index_.tokens().size() && begin() < end_; }
    bool is(std::string_view what) const { return inside() && token().is(what); }

    /// Behind the parentheses of a call; false where they do not close.
    bool passArguments() {
        int open = 0;
        for (; inside(); ++next_) {
            if (is("(") || is("[") || is("{")) ++open;
            if ((is(")") || is("]") || is("}")) && --open == 0) {
                ++next_;
                return true;
            }
        }
        return false;
    }

    /// The type of one name and of what it is called with: a member of `owner`, or a name that the
    /// place sees.
    int linkOf(int owner) {
        if (!inside() || !token().isName()) return kNoIndex;
        const std::size_t place = begin();
        const std::vector<int> meant = owner == kNoIndex ? index_.meaningsOf(token().text, place)
                                                         : index_.membersOf(owner, token().text);
        ++next_;
        const bool called = is("(");
        if (called && !passArguments()) return kNoIndex;
        // Of several only the compiler knows which; what a base class has as well is hidden.
        if (meant.empty() || (called && meant.size() > 1)) return kNoIndex;
        const Declaration& one = index_.declarations()[at(meant.front())];
        const bool fits =
            called ? one.kind == DeclarationKind::function || one.kind == DeclarationKind::method
                   : isVariable(one.kind);
        // A property with accessors of its own is what the compiler makes of it.
        if (!fits || one.kind == DeclarationKind::property) return kNoIndex;
        return meanings_.classNamed(index_.oneLine(one.type), one.nameRange.begin);
    }

    const Meanings& meanings_;
    const ScopeIndex& index_;
    std::size_t next_;
    std::size_t end_;
};

}  // namespace

int classByScopes(const Meanings& meanings, ByteRange range) {
    return range.empty() ? kNoIndex : Chain(meanings, range).type();
}

}  // namespace korvant
