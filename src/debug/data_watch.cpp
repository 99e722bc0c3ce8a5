#include "debug/data_watch.h"

#include "debug/evaluation_text.h"

namespace korvant {

/// False when the expression means nothing in the innermost frame.
bool DataWatch::findHome(Home& home, asIScriptContext& context, ValueTree& values) const {
    const FrameScope scope = values.scopeOf(0);
    const EvaluationText text = evaluationText(*context.GetEngine(), scope, home.expression);
    if (!text.error.empty() || scope.function() == nullptr) return false;
    home.everywhere = text.bindings.empty();
    home.functionId = scope.function()->GetId();
    home.depth = context.GetCallstackSize();
    return true;
}

bool DataWatch::changed(Breakpoint& breakpoint, asIScriptContext& context, ValueTree& values,
                        ScriptEvaluator& evaluator, std::string& before) {
    auto known = homes_.find(breakpoint.id);
    if (known == homes_.end() || known->second.expression != breakpoint.wish.name) {
        Home home;
        home.expression = breakpoint.wish.name;
        if (!findHome(home, context, values)) return false;
        known = homes_.insert_or_assign(breakpoint.id, home).first;
        breakpoint.hasLastValue = false;
    }
    const Home& home = known->second;
    unsigned level = 0;
    if (!home.everywhere) {
        const asUINT depth = context.GetCallstackSize();
        level = depth >= home.depth ? depth - home.depth : depth;
        asIScriptFunction* const function = level < depth ? context.GetFunction(level) : nullptr;
        if (function == nullptr || function->GetId() != home.functionId) {
            // The call has returned; the next one begins afresh.
            homes_.erase(known);
            breakpoint.hasLastValue = false;
            return false;
        }
    }
    const Evaluation now = evaluator.evaluate(level, home.expression, EvaluationPurpose::watch);
    if (!now.done) return false;
    std::string text = values.show(now.target, {}).value;
    before = breakpoint.lastValue;
    const bool changed = breakpoint.hasLastValue && text != before;
    breakpoint.lastValue = std::move(text);
    breakpoint.hasLastValue = true;
    return changed;
}

}  // namespace korvant
