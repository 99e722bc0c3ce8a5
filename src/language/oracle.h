// Asks the compiler what an expression of a script is.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/engine/engine_compat.h"
#include "language/scope_index.h"
#include "language/stripped_text.h"

namespace korvant {

class Oracle;

/// What belongs to the compiler of meanings alone: an engine that no script runs on. Its message
/// callback and its modules are the oracle's. The engine must be our build of the library: any text
/// is compiled on it.
class OracleEngine {
  public:
    using Maker = std::function<asIScriptEngine*()>;
    /// Takes over the reference to `engine`, which may be null: then nothing is known. A text that
    /// takes the compiler too long costs the engine; `another` makes the next one, where it is set.
    explicit OracleEngine(asIScriptEngine* engine, Maker another = {});
    ~OracleEngine();
    OracleEngine(const OracleEngine&) = delete;
    OracleEngine& operator=(const OracleEngine&) = delete;

    asIScriptEngine* engine() const noexcept { return engine_; }
    /// Builds `text` as the module `name`; null when it does not build, within two seconds. Texts
    /// that would overflow the compiler's stack are not given to it. Nothing is executed.
    asIScriptModule* build(const char* name, const std::string& text);
    /// What the compiler said last, the first error alone.
    const std::string& firstError() const noexcept { return firstError_; }
    /// Where its errors were.
    const std::vector<CompilerPlace>& errors() const noexcept { return errors_; }
    /// Discards the module of the oracle that is awake, or was last; it builds it again when it is
    /// asked. The engine shares types between modules, so that two of one text disturb each other.
    void rest();
    /// Another engine in the place of this one; false where none can be made. What was read off the
    /// engine is gone.
    bool renew();

  private:
    friend class Oracle;
    static void message(const asSMessageInfo* info, void* self) noexcept;
    void prepare();
    void replace();
    bool guarded(std::string_view text, std::uint64_t ms, const std::function<bool()>& compiles);
    asIScriptFunction* compile(asIScriptModule& module, const std::string& function);

    asIScriptEngine* engine_;
    Maker another_;
    std::string firstError_;
    std::vector<CompilerPlace> errors_;
    Oracle* awake_ = nullptr;
    /// What the declarations of the last text mean outlives its oracle: the next text is mostly the
    /// same but for a body. Null where not even these build.
    asIScriptModule* module_ = nullptr;
    std::optional<std::string> declarations_;  ///< those that it stands for, bodies left out
};

/// Types of expressions of one text. Works while bodies of functions are broken, and while some
/// declarations are: these are left out. Not for two threads at once.
class Oracle {
  public:
    /// Both must outlive it. Of several oracles of an engine one is awake.
    Oracle(OracleEngine& engine, const ScopeIndex& index);
    ~Oracle();
    Oracle(const Oracle&) = delete;
    Oracle& operator=(const Oracle&) = delete;

    /// Builds it when it is first asked for, and again when another oracle was awake since then.
    /// Null when not even the declarations build.
    asIScriptModule* module();

    /// From now on so many milliseconds may be spent; what is asked later cannot be told. For ever
    /// before the first call.
    void allow(std::uint64_t ms);

    /// "Hole@", "int", "double[]"; "void" for a call without a value; empty when it cannot be told.
    std::string typeOf(ByteRange expression);
    std::string typeOf(std::string_view expression, std::size_t offset);
    /// The type of a variable, also of one declared with "auto"; empty when it cannot be told.
    std::string typeOfVariable(int declaration);
    /// The class, interface or registered type of a declaration such as "const Hole@ &in".
    asITypeInfo* typeInfo(std::string_view declaration, std::size_t offset);
    /// The functions named `name` that the expression calls, the outermost call last.
    std::vector<asIScriptFunction*> callsIn(ByteRange expression, std::string_view name);
    /// The postfix chain that ends before `offset`, such as "a.b(1)[2]" before the dot behind it.
    ByteRange chainBefore(std::size_t offset) const;

  private:
    friend class OracleEngine;
    struct Probe {
        std::string parameters;
        std::string expression;
        std::string nameSpace;
    };
    bool prepare(std::string_view expression, std::size_t offset, Probe& probe);
    bool addParameter(int variable, Probe& probe);
    std::string withPath(std::string type, int variable) const;
    std::string memberInstead(const std::vector<ScriptToken>& tokens, std::size_t i,
                              int type) const;
    void build();
    void buildAny(const std::string& bare, const std::string& open);
    asIScriptFunction* compile(const Probe& probe, const std::string& body);
    std::string nameSpaceAt(std::size_t offset) const;
    std::size_t opening(std::size_t close) const;
    std::size_t beforeArguments(std::size_t close) const;
    void giveUp();
    bool spent() const;

    OracleEngine& engine_;
    const ScopeIndex& index_;
    const std::vector<ScriptToken>& tokens_;
    std::map<std::pair<std::size_t, std::string>, std::string> types_;
    int depth_ = 0;
    bool hopeless_ = false;
    std::uint64_t end_ = 0;  ///< of what may be spent, monotonic ms; 0: no end
};

/// "const Hole@ &in" is "Hole@": without what says how it is passed.
std::string passedType(std::string_view declaration);
/// "array<Hole@>@" is "array<Hole@>": without the handle.
std::string objectType(std::string_view type);

}  // namespace korvant
