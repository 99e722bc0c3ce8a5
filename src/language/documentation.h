// What is said about the functions of the library and of a script.
#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>

#include "host/engine/registration.h"
#include "language/scope_index.h"

namespace korvant {

struct FunctionHelp {
    std::string help;     ///< one sentence
    std::string example;  ///< script lines; may be empty
    std::string failure;  ///< what happens when it cannot; may be empty
    bool known() const { return !help.empty(); }
    /// All of it as Markdown.
    std::string markdown() const;
};

/// The rows of the library's tables by owner and declaration.
class Documentation {
  public:
    explicit Documentation(std::span<const FunctionFamily> families = {});
    /// `owner`: the type whose method it is; empty for global functions.
    FunctionHelp of(std::string_view owner, std::string_view declaration) const;
    FunctionHelp of(const asIScriptFunction& function) const;

  private:
    std::map<std::string, const FunctionRow*> rows_;
};

/// The remark that stands directly above a declaration, without its signs.
std::string remarkAbove(const ScopeIndex& index, int declaration);

/// A declaration as one line: "float Hole::grade(int at)", "const int kMost = 5", "class Hole".
std::string headline(const ScopeIndex& index, int declaration);

}  // namespace korvant
