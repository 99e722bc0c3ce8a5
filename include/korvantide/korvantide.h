// What a host calls. One thread: the one that runs the host's windows. While one thread is inside a
// function, the calls of others fail at once.
#ifndef KORVANTIDE_KORVANTIDE_H
#define KORVANTIDE_KORVANTIDE_H

#include <angelscript.h>

#include <cstdint>
#include <string>
#include <vector>

#include "korvantide/export.h"

extern "C" {

/// Installs the compiler message callback, creates the module's one context and registers the
/// run-time library. The engine stays the host's. Returns the context, with a reference that the
/// host releases, or null on failure. Calling it again for the same engine returns the same
/// context.
KORVANTIDE_API asIScriptContext* KORVANTIDE_CALL ConfigureScriptEngine(asIScriptEngine* engine);

/// Builds `script` as a fresh module "main". 1 on success, else 0.
KORVANTIDE_API std::int32_t KORVANTIDE_CALL CompileScript(asIScriptEngine* engine,
                                                          const std::string& script);

/// Executes a context that the host has prepared; returns its execution result unchanged.
KORVANTIDE_API std::int32_t KORVANTIDE_CALL RunScript(asIScriptContext* context);

/// Builds `script` and runs its "int main()" under debugger control. `breakpoints`: 1-based
/// lines, or null. True when the script finished or is suspended at a line.
KORVANTIDE_API bool KORVANTIDE_CALL RunApplication(asIScriptEngine* engine,
                                                   asIScriptContext* context,
                                                   const std::string& script,
                                                   const std::vector<std::int32_t>* breakpoints);

/// Resumes a suspended run. `stepMode`: 0 continue, 1 step over, 2 step into.
KORVANTIDE_API bool KORVANTIDE_CALL
ContinueApplication(asIScriptEngine* engine, asIScriptContext* context,
                    const std::vector<std::int32_t>* breakpoints, std::int32_t stepMode);

/// Opens the editor on `script` and returns when it has been closed: by its close box, `script` is
/// then the edited text; by its command Exit, `script` is as it was. `title` is kept and not used.
/// Returns at once, with `script` as it was, without a display, while an editor is open already and
/// while a script runs. Only a module with windows has this function.
KORVANTIDE_API void KORVANTIDE_CALL RunScriptEditor(asIScriptEngine* engine,
                                                    asIScriptContext* context, std::string& script,
                                                    std::string title);

/// Lets go of everything that the module holds of `engine`; the host may release the engine then.
KORVANTIDE_API void KORVANTIDE_CALL ReleaseScriptEngine(asIScriptEngine* engine);
}

#endif
