#include "debug/step_rule.h"

namespace korvant {

StatementPlace StatementPlace::of(asIScriptContext& context) {
    StatementPlace here;
    here.context = &context;
    here.function = currentFunction(context);
    here.depth = context.GetCallstackSize();
    here.line = context.GetLineNumber(0, &here.column, &here.section);
    return here;
}

bool StepRule::endsAt(const StatementPlace& here, bool newCall) const noexcept {
    // The step began in a context that has ended, in the making of global variables.
    if (mode_ != Mode::none && here.context != from_.context) return true;
    switch (mode_) {
        case Mode::over:
            return here.depth < from_.depth || (here.depth == from_.depth && elsewhere(here));
        case Mode::into:
            return newCall || here.depth != from_.depth || elsewhere(here);
        case Mode::out:
            return here.depth < from_.depth;
        case Mode::none:
            break;
    }
    return false;
}

bool LinePass::begins(const StatementPlace& here, bool again) noexcept {
    const StatementPlace before = last_;
    last_ = here;
    return !again || before.context != here.context || before.depth != here.depth ||
           !before.sameLine(here);
}

}  // namespace korvant
