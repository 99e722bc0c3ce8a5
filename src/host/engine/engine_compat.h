// The script engine, and the one place that knows how its generations differ.
#pragma once

#include <angelscript.h>

#include <cstdint>

namespace korvant {

/// The function with this declaration in `module`, or null. Generations before 2.23 answered with
/// an identifier; the result's life is the module's.
inline asIScriptFunction* findFunction(asIScriptModule& module, const char* declaration) {
    return module.GetFunctionByDecl(declaration);
}

/// 1-based line that `context` is about to execute; 0 or less in code that has no line.
inline std::int32_t currentLine(asIScriptContext& context) {
    return context.GetLineNumber(0);
}

/// The function that runs in `context`; null when none does.
inline asIScriptFunction* currentFunction(asIScriptContext& context) {
    return context.GetFunction(0);
}

/// How the index operator of a type is registered: a method since 2.20.
inline constexpr char kIndexDeclaration[] = "uint8 &opIndex(uint)";
inline constexpr char kConstIndexDeclaration[] = "const uint8 &opIndex(uint) const";

/// Makes string literals of scripts objects of the registered type "string".
int registerStringLiterals(asIScriptEngine* engine);

/// Gives an engine without a default array type the module's own, which declares itself as "int[]".
/// Returns a negative engine result on failure.
int ensureDefaultArray(asIScriptEngine* engine);

/// Marks the type that was just registered as this module's own, so that its objects may be read
/// as C++ objects: a host may have a type of the same name.
void markOwnType(asIScriptEngine* engine, const char* name);
bool isOwnType(const asITypeInfo* type);

/// While it lives, Build leaves global variables uninitialised and marks every statement, so that
/// a loop can be ended, and takes a text that is not UTF-8 byte for byte: the engine would read its
/// Windows Western letters as code points and write them as UTF-8. Then the host's settings are
/// back.
class BuildSettings {
  public:
    BuildSettings(asIScriptEngine* engine, bool utf8);
    ~BuildSettings();
    BuildSettings(const BuildSettings&) = delete;
    BuildSettings& operator=(const BuildSettings&) = delete;

  private:
    asIScriptEngine* engine_;
    asPWORD globalsAfterBuild_;
    asPWORD withoutLines_;
    asPWORD scanner_;
};

/// While it lives, the engine collects no garbage by itself: discarding a module would otherwise
/// start a full collection, whose time grows with the square of what lives.
class CollectionPause {
  public:
    explicit CollectionPause(asIScriptEngine* engine);
    ~CollectionPause();
    CollectionPause(const CollectionPause&) = delete;
    CollectionPause& operator=(const CollectionPause&) = delete;

  private:
    asIScriptEngine* engine_;
    asPWORD automatic_;
};

/// Bounds the depth of calls, and what they may take of memory, where the host left it open.
void boundCallDepth(asIScriptEngine* engine, std::uint32_t depth);

/// From now on `created` is called for every context that somebody makes for this engine, on the
/// thread that makes it. Only engines of our own build know that; on any other nothing happens.
void tellOfNewContexts(asIScriptEngine& engine, void (*created)(asIScriptContext*) noexcept);

}  // namespace korvant
