// An expression that has been compiled as a function, with what its parameters stand for.
#pragma once

#include <memory>
#include <string>

#include "debug/evaluation_text.h"
#include "debug/kept_value.h"
#include "host/run/script_session.h"

namespace korvant {

bool isHandle(asIScriptEngine& engine, int typeId);

class EvaluationCall {
  public:
    enum class Form {
        show,       ///< hands the value over
        statement,  ///< has none
        set,        ///< assigns it to the parameter "target_"
        give        ///< returns it as a handle, which is put where the target is
    };

    /// Null, and the messages say why, when it does not compile. `type`: with `give`.
    static std::unique_ptr<EvaluationCall> make(ScriptSession& session, asIScriptModule& module,
                                                const std::string& nameSpace,
                                                const EvaluationText& text, Form form, int type,
                                                BuildMessages& messages);
    ~EvaluationCall();
    EvaluationCall(const EvaluationCall&) = delete;
    EvaluationCall& operator=(const EvaluationCall&) = delete;

    /// Where the value goes, with `set` and `give`.
    void bindTarget(const TypedValue& target) { target_ = target; }
    /// Runs it with what the names mean in the frame now. Empty, or what went wrong.
    std::string run(ScriptSession& session, const FrameScope& scope, const SideRunLimits& limits);
    std::shared_ptr<KeptValue> takeShown() { return std::move(shown_); }
    /// Whether it calls what could change something: a script function, or a function of the
    /// library that is no constant method.
    bool mayChange() const;

  private:
    EvaluationCall(asIScriptFunction* function, const EvaluationText& text, Form form)
        : function_(function),
          bindings_(text.bindings),
          form_(form),
          changes_(text.changes || form == Form::set || form == Form::give) {}
    std::string bind(const FrameScope& scope);
    int bindOne(asUINT index, const EvaluationBinding& binding, void* address);
    void putHandle();

    asIScriptFunction* function_;
    asIScriptContext* context_ = nullptr;
    std::vector<EvaluationBinding> bindings_;
    Form form_;
    bool changes_;
    TypedValue target_;
    std::shared_ptr<KeptValue> shown_;
};

}  // namespace korvant
