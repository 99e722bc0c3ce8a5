// Asks the compiler what an expression of a script is.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/engine/engine_compat.h"
#include "language/scope_index.h"

namespace korvant {

/// What belongs to the compiler of meanings alone: an engine that no script runs on. Its message
/// callback and its modules are the oracle's. The engine must be our build of the library: any text
/// is compiled on it.
class OracleEngine {
  public:
    /// Takes over the reference to `engine`, which may be null: then nothing is known.
    explicit OracleEngine(asIScriptEngine* engine);
    ~OracleEngine();
    OracleEngine(const OracleEngine&) = delete;
    OracleEngine& operator=(const OracleEngine&) = delete;

    asIScriptEngine* engine() const noexcept { return engine_; }
    /// Builds `text` as the module `name`; null when it does not build. Nothing is executed.
    asIScriptModule* build(const char* name, const std::string& text);
    /// What the compiler said last, the first error alone.
    const std::string& firstError() const noexcept { return firstError_; }
    /// The lines, from 1, that its errors were about.
    const std::vector<int>& errorRows() const noexcept { return errorRows_; }

  private:
    friend class Oracle;
    static void message(const asSMessageInfo* info, void* self) noexcept;

    asIScriptEngine* engine_;
    std::string firstError_;
    std::vector<int> errorRows_;
};

/// Types of expressions of one text. Works while bodies of functions are broken: the declarations
/// alone must build. Not for two threads at once.
class Oracle {
  public:
    /// Both must outlive it. One oracle at a time for an engine.
    Oracle(OracleEngine& engine, const ScopeIndex& index);
    ~Oracle();
    Oracle(const Oracle&) = delete;
    Oracle& operator=(const Oracle&) = delete;

    /// Null when not even the declarations build.
    asIScriptModule* module() const noexcept { return module_; }

    /// "Hole@", "int", "double[]"; "void" for a call without a value; empty when it cannot be told.
    std::string typeOf(ByteRange expression);
    std::string typeOf(std::string_view expression, std::size_t offset);
    /// The type of a variable, also of one declared with "auto"; empty when it cannot be told.
    std::string typeOfVariable(int declaration);
    /// The class, interface or registered type of a declaration such as "const Hole@ &in".
    asITypeInfo* typeInfo(std::string_view declaration, std::size_t offset) const;
    /// The functions named `name` that the expression calls, the outermost call last.
    std::vector<asIScriptFunction*> callsIn(ByteRange expression, std::string_view name);
    /// The postfix chain that ends before `offset`, such as "a.b(1)[2]" before the dot behind it.
    ByteRange chainBefore(std::size_t offset) const;
    const std::vector<ScriptToken>& tokens() const noexcept { return tokens_; }
    /// The first token that begins at `offset` or behind it.
    std::size_t tokenAt(std::size_t offset) const;

  private:
    struct Probe {
        std::string parameters;
        std::string expression;
        std::string nameSpace;
    };
    bool prepare(std::string_view expression, std::size_t offset, Probe& probe);
    bool addParameter(int variable, Probe& probe);
    void build();
    asIScriptFunction* compile(const Probe& probe, const std::string& body);
    std::string nameSpaceAt(std::size_t offset) const;
    std::size_t opening(std::size_t close) const;

    OracleEngine& engine_;
    const ScopeIndex& index_;
    std::vector<ScriptToken> tokens_;
    asIScriptModule* module_ = nullptr;
    std::map<std::pair<std::size_t, std::string>, std::string> types_;
    int depth_ = 0;
};

/// The text with "private" and "protected" blanked, so that everything can be asked about.
std::string withoutAccess(std::string_view text);
/// The same with bodies of functions replaced by ones that build whatever stood there: those that
/// hold one of `rows` (from 1), or all of them where there is none.
std::string withoutBodies(std::string text, const ScopeIndex& index, const std::vector<int>& rows);

/// "const Hole@ &in" is "Hole@": without what says how it is passed.
std::string passedType(std::string_view declaration);
/// "array<Hole@>@" is "array<Hole@>": without the handle.
std::string objectType(std::string_view type);

}  // namespace korvant
