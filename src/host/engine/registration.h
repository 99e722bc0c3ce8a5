// Script-visible functions as table rows.
#pragma once

#include <span>

#include "host/engine/engine_compat.h"

namespace korvant {

/// One function or method that scripts can call. The row registers it under either calling
/// convention, feeds completion and call tips, and writes the manual.
struct FunctionRow {
    const char* declaration;                 ///< exactly as registered
    asSFuncPtr native;                       ///< for engines with native calls
    asECallConvTypes convention;             ///< how `native` is called
    asGENFUNC_t generic;                     ///< for engines built for portability; same behaviour
    const char* help;                        ///< one sentence: what it does
    const char* example = "";                ///< one or a few script lines
    const char* failure = "";                ///< what happens when it cannot; empty: it cannot fail
    asEBehaviours behaviour = asBEHAVE_MAX;  ///< of an object type; asBEHAVE_MAX: a plain function
    bool onlyReads = false;  ///< see readsItsObjects(); our engine then passes objects uncopied
};

/// One table of rows and what the manual calls it. `objectType` is null for global functions.
struct FunctionFamily {
    const char* title;
    const char* objectType;
    std::span<const FunctionRow> rows;
};

/// Registers all rows in order, native or generic as the engine library was built. Returns the
/// first negative result, else 0; the later rows are registered all the same. Rows with a
/// behaviour register as such, the others as functions or methods.
int registerGlobalFunctions(asIScriptEngine* engine, std::span<const FunctionRow> rows);
int registerMethods(asIScriptEngine* engine, const char* type, std::span<const FunctionRow> rows);

/// True when the engine library takes only generic functions; a test may force it.
bool portableConventions();
void forcePortableConventions(bool force);

}  // namespace korvant
