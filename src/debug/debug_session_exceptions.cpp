// Where a debugged run stops for an exception.
#include <cstring>
#include <utility>

#include "debug/debug_session_impl.h"

namespace korvant {

namespace {

/// Whether a function of the library raises what a function of the script raised inside it.
bool passesOn(const asIScriptFunction* function) {
    if (function == nullptr || function->GetFuncType() != asFUNC_SYSTEM) return false;
    const asITypeInfo* const type = function->GetObjectType();
    return type != nullptr && std::strcmp(type->GetName(), "array") == 0 &&
           isOwnType(function->GetEngine()->GetTypeInfoByName("array"));
}

/// How many calls there are below the innermost function of the library; 0 where there is none.
unsigned nativeCaller(asIScriptContext& context) {
    for (asUINT level = 0; level < context.GetCallstackSize(); ++level) {
        asIScriptFunction* const function = context.GetFunction(level);
        if (function != nullptr && function->GetFuncType() == asFUNC_SYSTEM)
            return context.GetCallstackSize() - level - 1;
    }
    return 0;
}

}  // namespace

void DebugSession::Impl::atException(asIScriptContext& context) noexcept {
    if (inside > 0 || !mayHold()) return;
    exclusively([&] {
        if (passedOn(context)) return;
        const ExceptionKind kind = kindOf(context);
        const StopRules::Filter* const filter = filterFor(rules, kind);
        if (filter == nullptr || (kind == ExceptionKind::lost && repeatsLost(context))) return;
        if (!filterHolds(*filter, context)) return;
        StopInfo stopped;
        stopped.reason = StopReason::exception;
        stopped.exception = kind;
        stopped.always = filter == &rules.all;
        stopped.place = placeOf(context);
        const char* const said = context.GetExceptionString();
        stopped.text = said != nullptr ? said : "";
        if (kind != ExceptionKind::lost) {
            passedDepth = nativeCaller(context);
            passedText = stopped.text;
        }
        hold(context, std::move(stopped));
    });
}

/// Arrays raise what a comparison of the script raised once more, in the function that called them:
/// that is no second stop.
bool DebugSession::Impl::passedOn(asIScriptContext& context) {
    const char* const said = context.GetExceptionString();
    const bool same = passedDepth != 0 && passedDepth == context.GetCallstackSize() &&
                      said != nullptr && passedText == said;
    passedDepth = 0;
    return same;
}

/// The engine looks for somebody who catches through functions of the library as well. Of those
/// arrays alone pass an exception on.
ExceptionKind DebugSession::Impl::kindOf(asIScriptContext& context) const {
    if (!context.IsNested())
        return context.WillExceptionBeCaught() ? ExceptionKind::caught : ExceptionKind::unhandled;
    for (asUINT level = 0; level < context.GetCallstackSize(); ++level) {
        asIScriptFunction* const function = context.GetFunction(level);
        // A frame of the engine's own, around a destructor.
        if (function == nullptr) return ExceptionKind::lost;
        if (function->GetFuncType() == asFUNC_SYSTEM) {
            if (!passesOn(function)) return ExceptionKind::lost;
            continue;
        }
        int column = 0;
        const int line = context.GetLineNumber(level, &column);
        if (text != nullptr && text->insideTry(line, column)) return ExceptionKind::caught;
    }
    return ExceptionKind::unhandled;
}

bool DebugSession::Impl::filterHolds(const StopRules::Filter& filter, asIScriptContext& context) {
    if (filter.condition.empty()) return true;
    const Inside mark(inside);
    std::string error;
    const bool holds = evaluator.holds(innermost(context), filter.condition, error);
    if (!error.empty())
        listener.onOutput("Condition \"" + filter.condition + "\": " + error + "\n",
                          placeOf(context), 0);
    return holds || !error.empty();
}

/// One function of the library may call a faulty function of the script a thousand times: that is
/// one stop. It is over when a statement of the caller runs.
bool DebugSession::Impl::repeatsLost(asIScriptContext& context) {
    unsigned depth = 0;
    for (asUINT level = 0; level < context.GetCallstackSize(); ++level) {
        asIScriptFunction* const function = context.GetFunction(level);
        if (function != nullptr && function->GetFuncType() != asFUNC_SYSTEM) continue;
        depth = context.GetCallstackSize() - level - 1;
        break;
    }
    if (depth == 0) return false;
    if (lostDepth == depth) return true;
    lostDepth = depth;
    apply();
    return false;
}

}  // namespace korvant
