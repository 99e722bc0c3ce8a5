#include "debug/data_watch.h"

#include "debug/evaluation_text.h"
#include "debug/frames.h"
#include "host/engine/program_position.h"

namespace korvant {

/// False when the expression means nothing in the innermost frame.
bool DataWatch::findHome(Home& home, asIScriptContext& context, ValueTree& values) const {
    const FrameScope scope = values.scopeOf(0);
    const EvaluationText text = evaluationText(*context.GetEngine(), scope, home.expression);
    if (!text.error.empty() || scope.function() == nullptr) return false;
    home.everywhere = text.bindings.empty();
    home.functionId = scope.function()->GetId();
    home.depth = context.GetCallstackSize();
    // Variables are made in namespaces that nobody stands in.
    home.nameSpace = isInitialiser(*scope.function()) ? std::string() : scope.nameSpace();
    return true;
}

/// False where its call has returned.
bool DataWatch::levelOf(const Home& home, asIScriptContext& context, unsigned& level) const {
    const asUINT depth = context.GetCallstackSize();
    level = depth >= home.depth ? depth - home.depth : depth;
    asIScriptFunction* const function = level < depth ? context.GetFunction(level) : nullptr;
    return function != nullptr && function->GetId() == home.functionId;
}

/// At its first statement, or where a loop begins that it begins with.
bool DataWatch::isNewCall(const Home& home, asIScriptContext& context) const {
    const asIScriptFunction* const function = context.GetFunction(0);
    return !home.everywhere && function != nullptr && function->GetId() == home.functionId &&
           context.GetCallstackSize() == home.depth && atEntry(context);
}

bool DataWatch::changed(Breakpoint& breakpoint, asIScriptContext& context, bool entry,
                        ValueTree& values, ScriptEvaluator& evaluator, std::string& before) {
    auto known = homes_.find(breakpoint.id);
    if (known == homes_.end() || known->second.expression != breakpoint.wish.name) {
        Home home;
        home.expression = breakpoint.wish.name;
        if (!findHome(home, context, values)) return false;
        known = homes_.insert_or_assign(breakpoint.id, home).first;
        breakpoint.hasLastValue = false;
    }
    const Home& home = known->second;
    if (breakpoint.hasLastValue && isNewCall(home, context)) {
        // Whether it is a loop is known at the next statement.
        if (entry) breakpoint.hasLastValue = false;
        return false;
    }
    unsigned level = 0;
    if (!home.everywhere && !levelOf(home, context, level)) {
        // The next call begins afresh.
        homes_.erase(known);
        breakpoint.hasLastValue = false;
        return false;
    }
    constexpr auto kPurpose = EvaluationPurpose::watch;
    const Evaluation now = home.everywhere
                               ? evaluator.evaluateGlobal(home.nameSpace, home.expression, kPurpose)
                               : evaluator.evaluate(level, home.expression, kPurpose);
    if (!now.done) {
        // What has never had a value may mean something else further on.
        if (!breakpoint.hasLastValue) homes_.erase(known);
        return false;
    }
    std::string text = values.show(now.target, {}).value;
    before = breakpoint.lastValue;
    const bool changed = breakpoint.hasLastValue && text != before;
    breakpoint.lastValue = std::move(text);
    breakpoint.hasLastValue = true;
    return changed;
}

}  // namespace korvant
