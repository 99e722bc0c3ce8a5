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
    condition,  ///< as watch
    console     ///< as a run: cancel() and the stop request end it
};

struct Evaluation {
    bool done = false;
    std::string error;    ///< why not, as the compiler or the exception says it
    bool isVoid = false;  ///< a statement without a value
    ValueTarget target;   ///< `value` stays until the tree is ended
};

/// Script's thread only, but for cancel().
class ScriptEvaluator {
  public:
    /// Both must outlive it.
    ScriptEvaluator(ScriptSession& session, ValueTree& values);
    ~ScriptEvaluator();
    ScriptEvaluator(const ScriptEvaluator&) = delete;
    ScriptEvaluator& operator=(const ScriptEvaluator&) = delete;

    /// The module was built anew or is gone: what was compiled for it is let go of.
    void forget();

    /// `level` is the engine's number of the frame; one beyond the last sees the global variables
    /// alone. The value tree has begun. Nothing is thrown but std::bad_alloc.
    Evaluation evaluate(unsigned level, std::string_view expression, EvaluationPurpose purpose);
    /// The same among the global variables, as a function of `nameSpace` finds them.
    Evaluation evaluateGlobal(const std::string& nameSpace, std::string_view expression,
                              EvaluationPurpose purpose);
    /// The same as a truth value in a frame at a statement: numbers other than 0 are true. What is
    /// compiled for it is kept, by the frame's statement. `error` says why there is none.
    bool holds(const FrameScope& scope, std::string_view expression, std::string& error);
    /// Assigns the value of `expression` to `target`, converted as an assignment of the script
    /// would. Empty, or what is wrong; nothing has changed then.
    std::string assign(unsigned level, const ValueTarget& target, std::string_view expression);
    /// Ends the evaluation that is running, and one for the console that begins before
    /// forgetCancel(). From any thread.
    void cancel() noexcept;
    void forgetCancel() noexcept;
    bool evaluating() const noexcept;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace korvant
