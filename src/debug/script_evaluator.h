// Expressions of the script language, evaluated in a frame of a script that stands still.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "debug/value_tree.h"
#include "host/run/script_session.h"

namespace korvant {

enum class EvaluationPurpose {
    hover,      ///< 50 ms; refuses what could change something
    watch,      ///< 300 ms; no dialogs, no input
    condition,  ///< as watch; compiled once and kept
    console     ///< as a run: the stop request ends it
};

struct Evaluation {
    bool done = false;
    std::string error;    ///< why not, as the compiler or the exception says it
    bool isVoid = false;  ///< a statement without a value
    TypedValue value;     ///< stays until the tree is cleared
};

class ScriptEvaluator {
  public:
    /// All must outlive it.
    ScriptEvaluator(ScriptSession& session, ValueTree& values);
    ~ScriptEvaluator();
    ScriptEvaluator(const ScriptEvaluator&) = delete;
    ScriptEvaluator& operator=(const ScriptEvaluator&) = delete;

    /// The module was built anew or is gone: what was compiled for it is forgotten.
    void forget();

    /// `context` stands still; `level` is the engine's number of the frame; a level beyond the
    /// last, or a null context with a module, sees the global variables alone. Never throws.
    Evaluation evaluate(asIScriptContext* context, asIScriptModule* module, unsigned level,
                        std::string_view expression, EvaluationPurpose purpose);
    /// The same as a truth value: numbers other than 0 are true. `error` says why there is none.
    bool holds(asIScriptContext* context, unsigned level, std::string_view expression,
               std::string& error);
    /// Assigns the value of `expression` to `target`, converted as an assignment of the script
    /// would. Empty, or what is wrong; nothing has changed then.
    std::string assign(asIScriptContext* context, unsigned level, const ValueTree::Target& target,
                       std::string_view expression);
    /// Ends the evaluation that is running. From any thread.
    void cancel() noexcept;
    bool evaluating() const noexcept;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace korvant
