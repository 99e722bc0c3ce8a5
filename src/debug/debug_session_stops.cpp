// Where a debugged run stops.
#include <algorithm>
#include <optional>
#include <utility>

#include "base/text/characters.h"
#include "debug/debug_session_impl.h"
#include "host/engine/program_position.h"

namespace korvant {

namespace {

/// Where the brace closes that opens at `open`: not one inside a text of the expression, nor one of
/// a pair. npos where none does.
std::size_t closingBrace(std::string_view text, std::size_t open) {
    int depth = 0;
    char quote = 0;
    for (std::size_t i = open; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != 0) {
            if (c == '\\') ++i;
            if (c == quote) quote = 0;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '{') {
            ++depth;
        } else if (c == '}' && --depth == 0) {
            return i;
        }
    }
    return std::string_view::npos;
}

/// Whether the first statement in the head of a loop stands there.
bool beginsLoop(std::string_view text, std::int32_t line, std::int32_t column) {
    std::size_t at = 0;
    for (; line > 1 && at != std::string_view::npos; --line) {
        at = text.find('\n', at);
        if (at != std::string_view::npos) ++at;
    }
    if (at == std::string_view::npos) return false;
    at += static_cast<std::size_t>(std::max(column, 1) - 1);
    constexpr std::string_view kFor = "for";
    if (text.substr(std::min(at, text.size())).starts_with(kFor)) return true;
    const auto blanks = [&] {
        while (at > 0 && at <= text.size() &&
               kTextBlanks.find(text[at - 1]) != std::string_view::npos)
            --at;
    };
    blanks();
    if (at == 0 || at > text.size() || text[at - 1] != '(') return false;
    --at;
    blanks();
    return text.substr(0, at).ends_with(kFor);
}

}  // namespace

/// The breakpoints whose state changed by it.
std::vector<int> DebugSession::Impl::useText(asIScriptModule& built, const std::string& builtText) {
    evaluator.forget();
    asideEvaluator.forget();
    module = &built;
    engine = built.GetEngine();
    scriptThread = std::this_thread::get_id();
    data.beginRun(text != nullptr && text->text() == builtText);
    text = std::make_unique<StatementStarts>(builtText);
    auto lines = CodeLines::of(built, *text, kMainSource);
    {
        const std::lock_guard lock(codeMutex);
        codeLines = lines;
    }
    if (coverage != nullptr) coverage->forgetFunctions();
    if (profiler != nullptr) profiler->forgetFunctions();
    hostLines = session.stopLines();
    std::vector<int> changed = book.resolve(std::move(lines));
    book.beginRun();
    held.clear();
    loops.clear();
    setVariables.begin(nullptr);
    step.end();
    pass.forget();
    target = {};
    lostDepth = 0;
    pauseNow = false;
    entryWanted = rules.entry;
    state = DebugState::running;
    return changed;
}

void DebugSession::Impl::onBuilt(asIScriptModule& built, const std::string& builtText) noexcept {
    std::optional<std::vector<int>> changed;
    exclusively([&] { changed = useText(built, builtText); });
    if (!changed) return;
    guarded([&] { listener.onBuilt(); });
    exclusively([&] {
        if (!changed->empty()) listener.onBreakpointsChanged(*changed);
        apply();
    });
}

void DebugSession::Impl::onBegin(asIScriptContext& context, bool goesOn) noexcept {
    exclusively([&] {
        runContext = &context;
        watched = &context;
        engine = context.GetEngine();
        scriptThread = std::this_thread::get_id();
        // A build has told those of its run, and ours are among them by now.
        if (goesOn) hostLines = session.stopLines();
        state = DebugState::running;
        apply();
    });
}

StopPolicy::Answer DebugSession::Impl::atStatement(asIScriptContext& context, std::int32_t line,
                                                   bool again) noexcept {
    if (inside > 0) return Answer::goOn;
    Answer answer = Answer::goOn;
    exclusively([&] {
        const bool stopping = mayStop(line);
        if (!stopping && !setVariables.watches(line)) {
            lastSeen = {};
            entrySeen = entryPending = false;
            answer = passedOver(context, line);
            return;
        }
        if (asksInVain(context)) {
            answer = passedOver(context, line);
            return;
        }
        const StatementPlace here = StatementPlace::of(context);
        const bool sameLine = again && lastSeen.line == line;
        noteSeen(context, here, again);
        if (setVariables.watches(line)) setVariables.pass(context, here, entry || newCall);
        if (!stopping) {
            answer = passedOver(context, line);
            return;
        }
        const bool newPass = pass.begins(here, sameLine) || newCall;
        const bool stops = stopsAt(context, line, here, newPass);
        const bool suspends =
            style != StopStyle::hold && !context.IsNested() && &context == runContext;
        if (!stops || (!suspends && !mayHold())) {
            answer = passedOver(context, line);
            if (answer != Answer::usual || style != StopStyle::suspend) return;
            // Global variables are made where nothing can be suspended, and who looks for another
            // line alone misses a call that begins at the same one.
            if (!newCall && (!newPass || &context == runContext)) return;
        }
        forgetWays();
        if (suspends) {
            answer = Answer::suspend;
            return;
        }
        hold(context, info);
        answer = Answer::goOn;
    });
    return answer;
}

/// The engine asks twice where a function begins, and once at any other statement. Unless a loop
/// begins there too, that tells calls apart that begin while one statement of the caller runs.
void DebugSession::Impl::noteSeen(asIScriptContext& context, const StatementPlace& here,
                                  bool again) {
    const bool twice = (again || everyStatement) && here == lastSeen;
    if (callBegins(context)) {
        entry = twice && entryPending;
        newCall = entryPending = !entry;
        entrySeen = entry;
    } else {
        const bool known = programPosition(context) != nullptr;
        entry = twice && !entrySeen && (!known || atEntry(context));
        entrySeen = twice && (entrySeen || entry);
        newCall = entryPending = false;
    }
    entryAsked = twice && !newCall && entryAsked;
    lastSeen = here;
}

bool DebugSession::Impl::callBegins(asIScriptContext& context) {
    if (!atEntry(context)) return false;
    const auto [place, isNew] = loops.try_emplace(programPosition(context), false);
    if (isNew) place->second = isLoop(context);
    return !place->second;
}

/// Whether more than a step of the host's and the variables that it may set are the reasons to be
/// asked about a line.
bool DebugSession::Impl::mayStop(std::int32_t line) const {
    return everyStatement || std::binary_search(asked.begin(), asked.end(), line);
}

/// A run that is suspended may have breakpoints and steps of its host beside ours; its breakpoints
/// are lines of the main text. Where it stops for them is found out then.
StopPolicy::Answer DebugSession::Impl::passedOver(asIScriptContext& context, std::int32_t line) {
    if (style == StopStyle::hold) return Answer::goOn;
    info.clear();
    if (!std::binary_search(hostLines.begin(), hostLines.end(), line)) return Answer::pass;
    notePlace(StatementPlace::of(context), line);
    if (!info.place.source.empty() || !book.at({}, line).empty()) return Answer::pass;
    info.reason = StopReason::breakpoint;
    return Answer::usual;
}

void DebugSession::Impl::notePlace(const StatementPlace& here, std::int32_t line) {
    if (here.section != nullptr && std::string_view(here.section) != kMainSource)
        info.place.source = here.section;
    info.place.line = line;
    info.place.column = here.column;
}

/// A step or breakpoint of the host's ends where the engine cannot suspend.
void DebugSession::Impl::atNestedStop(asIScriptContext& context) noexcept {
    if (inside > 0 || style != StopStyle::suspend) return;
    exclusively([&] {
        forgetWays();
        if (info.place.line == 0) info.place = placeOf(context);
        hold(context, info);
    });
}

/// It stands still: what it was to stop for is over.
void DebugSession::Impl::forgetWays() {
    step.end();
    target = {};
    pauseNow = false;
    entryWanted = false;
}

/// Fills `info` when it stops.
bool DebugSession::Impl::stopsAt(asIScriptContext& context, std::int32_t line,
                                 const StatementPlace& here, bool newPass) {
    if (lostDepth != 0 && here.depth <= lostDepth) {
        lostDepth = 0;
        apply();
    }
    info.clear();
    notePlace(here, line);
    const bool ended = step.endsAt(here, newCall);
    bool stops = breaksAt(context, here, newPass);
    if (!stops && dataChanged(context)) {
        info.reason = StopReason::dataBreakpoint;
        stops = true;
    }
    if (stops) return true;
    if (entryWanted && &context == runContext) {
        info.reason = StopReason::entry;
        return true;
    }
    if (pauseNow) {
        info.reason = StopReason::pause;
        return true;
    }
    info.reason = StopReason::step;
    const bool reached = newPass && target.line == line && target.source == info.place.source;
    return ended || reached;
}

bool DebugSession::Impl::breaksAt(asIScriptContext& context, const StatementPlace& here,
                                  bool newPass) {
    bool stops = false;
    const FrameScope scope({here.function, here.line, here.column, here.section}, context, module,
                           text.get(), kMainSource, &setVariables);
    book.findAt(info.place.source, here.line, found);
    for (Breakpoint* const breakpoint : found)
        if (passes(*breakpoint, scope, newPass)) {
            info.reason = StopReason::breakpoint;
            info.hitIds.push_back(breakpoint->id);
            stops = true;
        }
    const bool begins = entry || (stops && !entrySeen && atEntry(context));
    if (!begins || std::exchange(entryAsked, true) || here.function == nullptr) return stops;
    for (Breakpoint* const breakpoint : book.atEntry(here.function->GetId()))
        if (passes(*breakpoint, scope)) {
            info.reason = StopReason::functionBreakpoint;
            info.hitIds.push_back(breakpoint->id);
            stops = true;
        }
    return stops;
}

/// A loop on one line is one pass. Its condition is asked at each of its statements, and stops when
/// it begins to hold.
bool DebugSession::Impl::conditionHolds(const Breakpoint& breakpoint, const FrameScope& scope,
                                        bool newPass) {
    // Where a call begins it was asked a moment ago.
    if (entry && !newPass) return false;
    const std::string& condition = breakpoint.wish.condition;
    const Inside mark(inside);
    std::string error;
    bool holds = evaluator.holds(scope, condition, error);
    // Of what is watched everywhere it may ask for the place of the change, too.
    if (!error.empty() && scope.function() == nullptr)
        holds = evaluator.holds(innermost(*scope.context()), condition, error);
    const bool before = !newPass && held.count(breakpoint.id) > 0;
    if (holds)
        held.insert(breakpoint.id);
    else
        held.erase(breakpoint.id);
    if (error.empty()) return holds && !before;
    // What a loop counts with is declared where it begins.
    const bool early = text != nullptr && info.place.source.empty() &&
                       beginsLoop(text->text(), scope.line(), scope.column());
    if (!newPass || early) return false;
    // A condition that cannot be evaluated must not hide the breakpoint.
    report(breakpoint, "Condition \"" + condition + "\": " + error);
    return true;
}

/// Whether a breakpoint stops at this pass. A log text is written instead.
bool DebugSession::Impl::passes(Breakpoint& breakpoint, const FrameScope& scope, bool newPass) {
    const BreakpointWish& wish = breakpoint.wish;
    if (wish.condition.empty() ? !newPass : !conditionHolds(breakpoint, scope, newPass))
        return false;
    ++breakpoint.hits;
    HitCondition hits;
    if (!HitCondition::read(wish.hitCondition, hits) || !hits.holds(breakpoint.hits)) return false;
    if (wish.logText.empty()) return true;
    writeLog(breakpoint, *scope.context());
    return false;
}

void DebugSession::Impl::report(const Breakpoint& breakpoint, const std::string& said) {
    listener.onOutput(said + "\n", breakpoint.resolved, breakpoint.id);
}

void DebugSession::Impl::writeLog(const Breakpoint& breakpoint, asIScriptContext& context) {
    const Inside mark(inside);
    asideValues.begin(&context, module, text.get(), kMainSource, &setVariables);
    const std::string written = logText(breakpoint.wish.logText);
    asideValues.end();
    ScriptPlace place = placeOf(context);
    listener.onOutput(written + "\n", place, breakpoint.id);
}

/// Texts in braces are expressions; what cannot be evaluated says why. "\{" is a brace.
std::string DebugSession::Impl::logText(std::string_view wanted) {
    std::string written;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const bool escaped = wanted[i] == '\\' && i + 1 < wanted.size() &&
                             (wanted[i + 1] == '{' || wanted[i + 1] == '}');
        if (escaped) ++i;
        const auto end =
            wanted[i] == '{' && !escaped ? closingBrace(wanted, i) : std::string_view::npos;
        if (end == std::string_view::npos) {
            written += wanted[i];
            continue;
        }
        const Evaluation given =
            asideEvaluator.evaluate(0, wanted.substr(i + 1, end - i - 1), EvaluationPurpose::watch);
        if (!given.done)
            written += "{" + given.error + "}";
        else if (!given.isVoid)
            written += asideValues.show(given.target, {}).value;
        i = end;
    }
    return written;
}

bool DebugSession::Impl::dataChanged(asIScriptContext& context) {
    bool stops = false;
    const std::vector<Breakpoint*> watchedData = book.ofData();
    if (watchedData.empty()) return false;
    const Inside mark(inside);
    struct Change {
        Breakpoint* breakpoint;
        std::string before;
        FrameScope scope;
    };
    std::vector<Change> changes;
    asideValues.begin(&context, module, text.get(), kMainSource, &setVariables);
    for (Breakpoint* const breakpoint : watchedData) {
        std::string before;
        if (!data.changed(*breakpoint, context, entry, asideValues, asideEvaluator, before))
            continue;
        changes.push_back({breakpoint, std::move(before),
                           data.scopeIn(*breakpoint, innermost(context), asideValues)});
    }
    asideValues.end();
    for (auto& [breakpoint, before, scope] : changes) {
        if (!passes(*breakpoint, scope)) continue;
        info.hitIds.push_back(breakpoint->id);
        if (std::exchange(stops, true)) continue;
        info.text = breakpoint->wish.name;
        info.before = std::move(before);
        info.now = breakpoint->lastValue;
    }
    return stops;
}

/// Before it goes on: what is watched since this stop has its meaning here, and what was set by
/// hand is no change.
void DebugSession::Impl::lookAtData(asIScriptContext& context) {
    if (!book.watchesData()) return;
    const Inside mark(inside);
    asideValues.begin(&context, module, text.get(), kMainSource, &setVariables);
    std::string before;
    for (Breakpoint* const breakpoint : book.ofData())
        data.changed(*breakpoint, context, false, asideValues, asideEvaluator, before);
    asideValues.end();
}

FrameScope DebugSession::Impl::innermost(asIScriptContext& context) const {
    return {&context, 0, module, text.get(), kMainSource, &setVariables};
}

ScriptPlace DebugSession::Impl::placeOf(asIScriptContext& context) const {
    ScriptPlace place;
    const char* section = nullptr;
    int column = 0;
    if (context.GetFunction(0) == nullptr) return place;
    place.line = std::max(context.GetLineNumber(0, &column, &section), 0);
    place.column = column;
    if (section != nullptr && std::string_view(section) != kMainSource) place.source = section;
    return place;
}

void DebugSession::Impl::atAttention(asIScriptContext& context) noexcept {
    if (inside > 0) return;
    exclusively([&] {
        if (profiler != nullptr) profiler->sample(context);
        if (applyWanted.exchange(false)) apply();
        if (attentionWanted.exchange(false)) listener.onAttention();
        if (!pauseWanted.exchange(false)) return;
        pauseNow = true;
        apply();
    });
}

void DebugSession::Impl::insideNative() noexcept {
    if (inside > 0 || !attentionWanted) return;
    guarded([&] {
        attentionWanted = false;
        listener.onWait();
    });
}

void DebugSession::Impl::beforeEnd(asIScriptContext& context, bool memory) noexcept {
    if (inside > 0 || !mayHold() || !(memory ? rules.memory : rules.timeOut)) return;
    exclusively([&] {
        StopInfo stopped;
        stopped.reason = memory ? StopReason::memory : StopReason::timeOut;
        stopped.place = placeOf(context);
        stopped.text = memory ? "Out of memory" : "The time of this run is over.";
        hold(context, std::move(stopped));
    });
}

void DebugSession::Impl::onLeft(asIScriptContext* context, const RunOutcome& outcome,
                                const RunFailure& failure) noexcept {
    watched = nullptr;
    exclusively([&] {
        if (outcome.stoppedAtLine()) {
            state = DebugState::suspended;
            // For a reason of the host's it stops at a place that nobody has asked about.
            if (info.place.line != outcome.line && context != nullptr) {
                info.clear();
                notePlace(StatementPlace::of(*context), outcome.line);
            }
            beginLooking(context);
            listener.onStopped(info);
            return;
        }
        const bool readable = starting && failure.kind == RunFailure::Kind::exception &&
                              context != nullptr && context->GetState() == asEXECUTION_EXCEPTION;
        evaluator.forget();
        asideEvaluator.forget();
        hostLines.clear();
        pauseWanted = false;
        state = DebugState::idle;
        if (readable && !restartWanted) {
            state = DebugState::ended;
            beginLooking(context);
        }
        if (!restartWanted) listener.onEnded(failure);
    });
}

}  // namespace korvant
