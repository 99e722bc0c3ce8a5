// Which names fit where the caret is.
#pragma once

#include <string>
#include <vector>

#include "language/expression_before.h"
#include "language/symbols.h"

namespace korvant {

/// The names that are known at a place of a script.
class SymbolTable {
  public:
    /// `inScript` wins over `general` where both have a name.
    SymbolTable(const std::vector<Symbol>& general, std::vector<Symbol> inScript, int caret)
        : general_(general), inScript_(std::move(inScript)), caret_(caret) {}

    /// Names that begin like the word, in any case, each once; sorted without regard to case.
    std::vector<std::string> completions(const WordBefore& before) const;
    /// The functions that a call may mean, overloads included.
    std::vector<Symbol> overloads(const WordBefore& function) const;
    /// The type of a chain; empty when it cannot be told.
    std::string typeOf(const std::vector<ChainLink>& chain) const;

  private:
    template <class Visit>
    void forEach(const Visit& visit) const;
    const Symbol* find(const std::string& name, const std::string& owner, bool called) const;
    std::string classAround() const;

    const std::vector<Symbol>& general_;
    std::vector<Symbol> inScript_;
    int caret_;
};

/// Where the parameter number `argument` stands in a declaration, as begin and end; both 0 when it
/// has no such parameter.
struct ParameterPlace {
    int begin = 0;
    int end = 0;
};
ParameterPlace parameterPlace(const std::string& declaration, int argument);

}  // namespace korvant
