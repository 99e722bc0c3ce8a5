// What the names of a script mean: by their scopes, and where scopes do not tell, by the compiler.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "language/oracle.h"
#include "language/scope_index.h"

namespace korvant {

/// What one name means. Exactly one of the first three is set, or none.
struct Meaning {
    std::vector<int> declarations;          ///< of the script, the one meant first
    asIScriptFunction* function = nullptr;  ///< of the library; not counted
    std::string owner;                      ///< the library's type whose member it is
    asITypeInfo* type = nullptr;            ///< of the library; not counted
    bool property = false;                  ///< of the library: a variable, or a member that is one

    bool known() const {
        return !declarations.empty() || function != nullptr || type != nullptr || property;
    }
    int declaration() const { return declarations.empty() ? kNoIndex : declarations.front(); }
};

/// Answers for one text. Valid as long as the engine; not for two threads at once.
class Meanings {
  public:
    Meanings(OracleEngine& engine, std::shared_ptr<const ScopeIndex> index);

    const ScopeIndex& index() const noexcept { return *index_; }
    Oracle& oracle() noexcept { return oracle_; }
    /// With what the library offers; null where none could be made.
    asIScriptEngine* engine() const noexcept { return engine_.engine(); }

    Meaning of(const NameUse& use);
    /// Everything that is the same as a declaration: overrides of a method in bases and derived
    /// classes, constructors and destructors of a class, all openings of a namespace. Holds the
    /// declaration itself.
    std::vector<int> familyOf(int declaration) const;
    /// All uses that mean one of a family, declarations included, in the order of the text.
    std::vector<const NameUse*> referencesTo(const std::vector<int>& family);
    /// What stands before a dot: the class of this text, else by what the compiler calls it.
    struct Owner {
        int type = kNoIndex;
        std::string name;  ///< empty where scopes alone tell the class, or nobody the type
    };
    Owner ownerBefore(std::size_t dot);
    /// The declaration of a class or interface of this text by what is written at `offset`;
    /// kNoIndex for none.
    int classNamed(std::string_view type, std::size_t offset) const;
    /// The same by the whole path, as the compiler tells types.
    int classWithPath(std::string_view type) const;
    /// Functions of this text that the call with this opening bracket, a token of the oracle, may
    /// mean, the best first: constructors for objects, function types for handles.
    std::vector<int> functionsCalledAt(std::size_t bracket);
    /// What the word "super" calls: the base's constructor that fits the arguments best, else the
    /// base; kNoIndex where that is no script's, and for any other word.
    int calledBySuper(const NameUse& use);
    /// Classes and interfaces of this text that inherit from one, in the order of the text.
    std::vector<int> derivedFrom(int type) const;
    /// The word of a use.
    std::string_view nameOf(const NameUse& use) const;

  private:
    Meaning ofMember(const NameUse& use);
    Meaning ofLibrary(const NameUse& use);
    void choose(const NameUse& use, Meaning& meaning);
    Meaning memberOfLibrary(asITypeInfo& type, const NameUse& use);
    ByteRange callAround(const NameUse& use) const;
    std::vector<ByteRange> argumentsAt(std::size_t bracket) const;
    int fit(int function, const std::vector<ByteRange>& arguments);
    Meaning ofLabel(const NameUse& use);
    std::vector<int> accessorsIn(int type, const NameUse& use) const;
    std::vector<int> accessorsFor(const NameUse& use) const;
    std::set<int> overridesOf(int method) const;
    int ownerOf(int declaration) const;

    OracleEngine& engine_;
    std::shared_ptr<const ScopeIndex> index_;
    Oracle oracle_;
    mutable std::vector<std::vector<int>> derived_;  ///< by base; empty: not asked for yet
};

/// The types of a function's parameters, plainly written, for comparing two declarations.
std::vector<std::string> parameterTypes(const ScopeIndex& index, int function);

}  // namespace korvant
