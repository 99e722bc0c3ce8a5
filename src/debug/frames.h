// The call stack of a script that stands still.
#pragma once

#include <string>
#include <vector>

#include "debug/stop_rules.h"
#include "host/engine/engine_compat.h"

namespace korvant {

struct DebugFrame {
    std::string function;  ///< "int Class::method(int)"
    std::string name;      ///< "Class::method"
    ScriptPlace place;
    bool native = false;  ///< a function of the library, which called back into the script
    unsigned level = 0;   ///< the engine's number of the frame
};

/// Of global variables: it has no name.
bool isInitialiser(const asIScriptFunction& function);

/// Reads the frames of a context that is held, suspended, or ended in an exception and not yet
/// unprepared. Frames without a function (the engine's own, around a destructor) are left out.
class Frames {
  public:
    /// `context` may be null: no frames. `mainSource`: the section that is the main text.
    Frames(asIScriptContext* context, std::string_view mainSource);

    /// 0 is the innermost.
    unsigned count() const noexcept { return static_cast<unsigned>(levels_.size()); }
    /// An empty frame beyond the last.
    DebugFrame frame(unsigned index) const;
    /// The engine's number of a frame.
    unsigned level(unsigned index) const { return levels_.at(index); }
    asIScriptContext* context() const noexcept { return context_; }

  private:
    asIScriptContext* context_;
    std::string mainSource_;
    std::vector<unsigned> levels_;
};

/// "Class::method" or "ns::function" of a function.
std::string qualifiedName(const asIScriptFunction& function);
/// "int Class::method(int)".
std::string declarationOf(const asIScriptFunction& function);

}  // namespace korvant
