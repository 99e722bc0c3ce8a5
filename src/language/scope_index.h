// Where the names of a script stand, what they may mean by their scopes, and where code can stop.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "language/syntax.h"
#include "language/text_document.h"

namespace korvant {

/// Made once for a text and never changed afterwards, so that any thread may read it. Works on
/// texts that do not compile; what a name really means only the compiler knows (overloads, members
/// of what an expression gives). Indexes are those of the vectors of Syntax, kNoIndex for none;
/// offsets are bytes.
class ScopeIndex {
  public:
    explicit ScopeIndex(std::string text);
    ScopeIndex(const ScopeIndex&) = delete;
    ScopeIndex& operator=(const ScopeIndex&) = delete;

    const TextDocument& document() const noexcept { return document_; }
    const std::vector<Declaration>& declarations() const noexcept { return syntax_.declarations; }
    const std::vector<Scope>& scopes() const noexcept { return syntax_.scopes; }
    const std::vector<NameUse>& uses() const noexcept { return syntax_.uses; }
    const std::vector<Statement>& statements() const noexcept { return syntax_.statements; }
    /// Of the text, in its order; comments are the others.
    const std::vector<ScriptToken>& tokens() const noexcept { return tokens_.code; }
    const std::vector<ScriptToken>& remarks() const noexcept { return tokens_.remarks; }

    // By place.
    /// The innermost scope around `offset`; 0, the file's, if nothing else.
    int scopeAt(std::size_t offset) const;
    /// The function, method, accessor or nameless function whose parameters or body hold `offset`.
    int functionAt(std::size_t offset) const;
    /// The class or interface whose members `offset` sees by their names; those around a nameless
    /// function are not seen inside it.
    int classAt(std::size_t offset) const;
    /// The name that `offset` touches, its end included.
    const NameUse* useAt(std::size_t offset) const;

    /// The first token that begins at `offset` or behind it.
    std::size_t tokenAt(std::size_t offset) const;

    // By name.
    /// All uses of `name`, in the order of the text.
    std::vector<const NameUse*> usesOf(std::string_view name) const;
    /// What `name` may mean where `use` stands, the best first: the innermost local or parameter
    /// that is known there, else members of the class around and of what it inherits, else what the
    /// namespaces around declare, from inside out. Of functions all of one name. Behind "." only
    /// what stands behind "this." is told; behind "::" what the path before names.
    std::vector<int> meaningsOf(const NameUse& use) const;
    /// The same for another name in the place of `use`.
    std::vector<int> meaningsOf(const NameUse& use, std::string_view name) const;
    /// The same for a name without a path at a place.
    std::vector<int> meaningsOf(std::string_view name, std::size_t offset) const;
    /// The local or parameter of this name that a statement at `offset` sees: the innermost, of
    /// several in one block the last one declared before it.
    int variableAt(std::string_view name, std::size_t offset) const;
    /// Locals and parameters that are known at `offset`, hidden ones left out, inner ones first.
    std::vector<int> variablesAt(std::size_t offset) const;
    /// What a scope declares, in the order of the text.
    const std::vector<int>& declaredIn(int scope) const;
    /// Members of a class or interface of this script of that name, inherited ones last.
    std::vector<int> membersOf(int type, std::string_view name) const;
    /// What a class or interface of this script names as its bases, as far as it is of the script.
    std::vector<int> basesOf(int type) const;
    /// The type itself and everything of this script that it inherits from, each once.
    std::vector<int> lineageOf(int type) const;
    /// "A::B" for what is declared in namespaces or classes; empty for the rest.
    std::string pathOf(int declaration) const;
    /// The text of a range, on one line with single blanks and without remarks.
    std::string oneLine(ByteRange range) const;

  private:
    std::string_view nameOf(const NameUse& use) const;
    void collect(int scope, std::string_view name, std::size_t offset, bool inCode,
                 std::vector<int>& found) const;
    struct Path {
        std::vector<std::string_view> words;
        bool global = false;  ///< nothing stands in front of the first "::"
    };
    Path pathBefore(const NameUse& use) const;
    std::vector<int> pathsOf(const NameUse& use, std::string_view name) const;
    std::vector<int> qualified(const NameUse& use, std::string_view name) const;
    void inPath(const std::vector<std::string_view>& path, std::string_view name, int scope,
                std::vector<int>& found) const;
    bool isNameless(const Scope& scope) const;
    bool knownAt(const Declaration& declaration, std::size_t offset) const;

    TextDocument document_;
    CodeAndRemarks tokens_;
    Syntax syntax_;
    std::size_t openBody_;
    std::vector<std::vector<int>> declared_;  ///< by scope
    std::unordered_map<std::string_view, std::vector<int>> usesByName_;
    std::unordered_map<std::string_view, std::vector<int>> byName_;  ///< declarations
};

}  // namespace korvant
