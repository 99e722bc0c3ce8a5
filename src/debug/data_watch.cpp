#include "debug/data_watch.h"

#include <algorithm>

#include "base/text/characters.h"
#include "debug/evaluation_text.h"
#include "debug/frames.h"
#include "host/engine/program_position.h"

namespace korvant {

namespace {

/// Functions without a name are told apart by it.
std::string rawDeclaration(const asIScriptFunction& function) {
    return orEmpty(function.GetDeclaration(true, true));
}

}  // namespace

void DataWatch::beginRun(bool sameText) {
    if (!sameText) homes_.clear();
    std::erase_if(homes_, [](const auto& one) { return !one.second.found; });
    for (auto& [id, home] : homes_) {
        home.lasts = home.everywhere;
        home.older = 0;
    }
}

/// The engine's number of the frame; as many as there are when there is none.
unsigned DataWatch::levelIn(const Home& home, asIScriptContext& context) {
    const asUINT depth = context.GetCallstackSize();
    return depth >= home.depth ? depth - home.depth : depth;
}

/// False when the expression means nothing in its frame.
bool DataWatch::find(Home& home, asIScriptContext& context, ValueTree& values) {
    const asUINT depth = context.GetCallstackSize();
    const unsigned level = home.calls > 0 && home.calls <= depth ? depth - home.calls : 0;
    const FrameScope scope = values.scopeOf(level);
    if (scope.function() == nullptr) return false;
    const EvaluationText text = evaluationText(*context.GetEngine(), scope, home.expression);
    if (!text.error.empty() || text.changes) return false;
    home.found = home.lasts = true;
    home.everywhere = text.bindings.empty();
    home.function = rawDeclaration(*scope.function());
    home.functionId = scope.function()->GetId();
    home.depth = depth - level;
    // Variables are made in namespaces that nobody stands in.
    home.nameSpace = isInitialiser(*scope.function()) ? std::string() : scope.nameSpace();
    return true;
}

/// Its call has returned: whether the innermost one is a later one of the same function, in which
/// the names have values.
bool DataWatch::findCall(Home& home, asIScriptContext& context, bool entry, ValueTree& values) {
    const asUINT depth = context.GetCallstackSize();
    const FrameScope scope = values.scopeOf(0);
    const bool later = scope.function() != nullptr && (entry || depth > home.older) &&
                       rawDeclaration(*scope.function()) == home.function;
    home.older = std::min(home.older, later ? depth - 1 : depth);
    if (!later) return false;
    if (!evaluationText(*context.GetEngine(), scope, home.expression).error.empty()) return false;
    home.lasts = true;
    home.functionId = scope.function()->GetId();
    home.depth = depth;
    return true;
}

bool DataWatch::hasReturned(const Home& home, asIScriptContext& context) {
    if (home.everywhere) return false;
    const unsigned level = levelIn(home, context);
    asIScriptFunction* const function =
        level < context.GetCallstackSize() ? context.GetFunction(level) : nullptr;
    return function == nullptr || function->GetId() != home.functionId;
}

FrameScope DataWatch::scopeIn(const Breakpoint& breakpoint, const FrameScope& innermost,
                              ValueTree& values) const {
    const auto known = homes_.find(breakpoint.id);
    if (known == homes_.end()) return innermost;
    const Home& home = known->second;
    return home.everywhere ? innermost.globalsWithin(home.nameSpace)
                           : values.scopeOf(levelIn(home, *innermost.context()));
}

/// At its first statement, or where a loop begins that it begins with.
bool DataWatch::isNewCall(const Home& home, asIScriptContext& context) {
    const asIScriptFunction* const function = context.GetFunction(0);
    return !home.everywhere && function != nullptr && function->GetId() == home.functionId &&
           context.GetCallstackSize() == home.depth && atEntry(context);
}

bool DataWatch::changed(Breakpoint& breakpoint, asIScriptContext& context, bool entry,
                        ValueTree& values, ScriptEvaluator& evaluator, std::string& before) {
    Home& home = homes_[breakpoint.id];
    if (home.expression != breakpoint.wish.name || home.calls != breakpoint.wish.calls) {
        home = {};
        home.expression = breakpoint.wish.name;
        home.calls = breakpoint.wish.calls;
        breakpoint.hasLastValue = false;
    }
    if (home.lasts && hasReturned(home, context)) {
        // The next call begins afresh.
        home.lasts = false;
        home.older = context.GetCallstackSize();
        if (home.depth > 0) home.older = std::min(home.older, home.depth - 1);
        breakpoint.hasLastValue = false;
    }
    if (breakpoint.hasLastValue && isNewCall(home, context)) {
        // Whether it is a loop is known when it is asked about again.
        if (!entry) return false;
        breakpoint.hasLastValue = false;
    }
    if (!home.found && !find(home, context, values)) return false;
    if (!home.lasts && !findCall(home, context, entry, values)) return false;
    constexpr auto kPurpose = EvaluationPurpose::watch;
    const Evaluation now =
        home.everywhere ? evaluator.evaluateGlobal(home.nameSpace, home.expression, kPurpose)
                        : evaluator.evaluate(levelIn(home, context), home.expression, kPurpose);
    if (!now.done) {
        // What has never had a value may mean something else further on.
        if (!home.valued && home.calls == 0) home.found = home.lasts = false;
        return false;
    }
    std::string text = values.show(now.target, {}).value;
    before = breakpoint.lastValue;
    const bool changed = breakpoint.hasLastValue && text != before;
    breakpoint.lastValue = std::move(text);
    breakpoint.hasLastValue = home.valued = true;
    return changed;
}

}  // namespace korvant
