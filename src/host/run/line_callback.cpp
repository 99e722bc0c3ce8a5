#include "host/run/line_callback.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string_view>

#include "host/engine/active_context.h"
#include "host/engine/engine_memory.h"

namespace korvant {

namespace {

bool steps(StepMode mode) {
    return mode != StepMode::run;
}

std::int64_t steadyMilliseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

}  // namespace

int LineCallback::install(asIScriptContext& context) {
    return context.SetLineCallback(asFUNCTION(entry), this, asCALL_CDECL);
}

int LineCallback::installEndOnly(asIScriptContext& context) {
    return context.SetLineCallback(asFUNCTION(endOnlyEntry), this, asCALL_CDECL);
}

int LineCallback::installForGlobals(asIScriptContext& context) {
    if (policy_ == nullptr || !policy_->mayHold()) return installEndOnly(context);
    context.SetExceptionCallback(asFUNCTION(exceptionEntry), this, asCALL_CDECL);
    return install(context);
}

bool LineCallback::mayBeOff() const noexcept {
    return breakpoints_.empty() && wantedAttention() == 0;
}

unsigned LineCallback::wantedAttention() const noexcept {
    const bool every = steps(state_.stepMode) || everyStatement();
    return (every ? kStepping : 0u) | (counts() ? kCounting : 0u);
}

int LineCallback::execute(asIScriptContext& context, bool ours) {
    begin(context, ours);
    const ExecutionMark mark(context);
    if (policy_ != nullptr)
        context.SetExceptionCallback(asFUNCTION(exceptionEntry), this, asCALL_CDECL);
    const int result = context.Execute();
    end();
    if (policy_ != nullptr) context.ClearExceptionCallback();
    return result;
}

void LineCallback::begin(asIScriptContext& context, bool ours) {
    forgetClear();
    if (!breakpoints_.empty()) findRegisters();
    executing_ = true;
    watched_ = watch_.start();
    attention_ = (watched_ ? 0u : kUnwatched) | wantedAttention();
    attendedAt_ = steadyMilliseconds();
    run_ = ours ? &context : nullptr;
    if (watched_) objects_.watch(*context.GetEngine());
    // What is due from the start must not wait for the watch thread to wake up.
    const bool due = millisecondsLeft(1) == 0;
    if (due) attend();
    if (ours && watched_ && mayBeOff() && !due) {
        state_.lastStoppedLine = 0;
        off_ = &context;
        context.ClearLineCallback();
    }
    foreign_ = ours ? nullptr : &context;
    if (watched_)
        watch_.arm(*this);
    else if (!ours)
        installEndOnly(context);  // its maker's callback goes, or nothing would end it
}

void LineCallback::end() {
    if (watched_) watch_.disarm();
    objects_.forget();
    if (off_ != nullptr) install(*off_);
    if (foreign_ != nullptr && (attention_.load() & kDue) != 0) findEnding(nullptr);
    off_ = foreign_ = nullptr;
    run_ = nullptr;
    attention_ = kUnwatched;
    watched_ = false;
    executing_ = false;
}

/// Where the callback was taken off, it comes back when there is something to look at; it is taken
/// off again where there is nothing any more.
void LineCallback::policyChanged() {
    if (!executing_) return;
    if (watched_) watch_.disarm();
    forgetClear();
    if (!breakpoints_.empty()) findRegisters();
    attention_.fetch_and(~unsigned{kByLine | kStepping | kCounting});
    attention_.fetch_or(wantedAttention());
    if (off_ != nullptr && !mayBeOff()) {
        install(*off_);
        off_ = nullptr;
    } else if (off_ == nullptr && run_ != nullptr && watched_ && mayBeOff()) {
        off_ = run_;
        if ((attention_.load() & kDue) == 0) off_->ClearLineCallback();
    }
    if (watched_ && !held_) watch_.arm(*this);
}

void LineCallback::beginHold() {
    held_ = true;
    if (watched_) watch_.disarm();
}

void LineCallback::endHold() {
    held_ = false;
    if (watched_) watch_.arm(*this);
}

void LineCallback::seeAttention() {
    if (attentionWanted_ && watched_ && foreign_ == nullptr) watch_.alertNow();
}

bool LineCallback::attentionDue() {
    if (foreign_ != nullptr) return false;  // nothing of it can be looked at, only ended
    if (attentionWanted_) return true;
    const std::uint32_t every = policy_ != nullptr ? policy_->attentionEvery() : 0;
    return every != 0 && steadyMilliseconds() - attendedAt_ >= static_cast<std::int64_t>(every);
}

void LineCallback::giveAttention(asIScriptContext& context) {
    if (policy_ == nullptr || !attentionDue()) return;
    attentionWanted_ = false;
    policy_->atAttention(context);
    attendedAt_ = steadyMilliseconds();
}

void LineCallback::exceptionEntry(asIScriptContext* context, void* self) noexcept {
    auto& callback = *static_cast<LineCallback*>(self);
    if (callback.policy_ != nullptr) callback.policy_->atException(*context);
}

void LineCallback::lookNow() {
    if (!watched_) return;
    if (state_.stopRequest || limit_.expired())
        watch_.alertNow();
    else
        watch_.lookAgain();
}

void LineCallback::loseWatch() noexcept {
    watch_.forget();
    watched_ = false;
    attention_.fetch_or(kUnwatched);
    if (off_ != nullptr) install(*off_);
    if (foreign_ != nullptr) installEndOnly(*foreign_);
    off_ = nullptr;
}

// All that most statements cost is one flag and the function that runs. Without a run of ours
// nobody watches, and the flag stays set: hosts may execute the context themselves.
void LineCallback::entry(asIScriptContext* context, void* self) noexcept {
    auto& callback = *static_cast<LineCallback*>(self);
    unsigned attention = callback.attention_.load(std::memory_order_relaxed);
    // Global variables are made without anybody watching.
    if ((attention & kCounting) != 0 || ((attention & kUnwatched) != 0 && callback.counts())) {
        callback.policy_->count(*context);
        attention &= ~unsigned{kCounting};
        if (attention == 0 && callback.breakpoints_.empty()) {
            callback.state_.lastStoppedLine = 0;
            return;
        }
    }
    if ((attention & ~unsigned{kByLine}) != 0) return callback.decideSlowly(*context);
    const asDWORD* const place = programPosition(*context);
    if (!callback.seenClear(*context, place)) return callback.lookForStops(*context, place);
    callback.state_.lastStoppedLine = 0;
}

/// The line is asked for once at each place where nothing stops.
void LineCallback::lookForStops(asIScriptContext& context, const asDWORD* place) noexcept {
    const bool byLine = (attention_.load(std::memory_order_relaxed) & kByLine) != 0;
    if (byLine && passByLine(context)) return noteClear(context, place);
    asIScriptFunction* const function = currentFunction(context);
    if (function == nullptr || function != clear_) {
        pass(context, function);
        if (function == nullptr || function != clear_) return;
    }
    state_.lastStoppedLine = 0;
    noteClear(context, place);
}

/// Neither stepping nor due. The call when execution leaves the context needs no care: at a line
/// that is just stopped at nothing changes, and stopAt() sees that nothing runs.
void LineCallback::pass(asIScriptContext& context, asIScriptFunction* function) noexcept {
    if (function != nullptr && !breakpoints_.mayStopIn(function)) {
        clear_ = function;
        state_.lastStoppedLine = 0;
        return;
    }
    byLineLeft_ = kStatementsByLine;
    attention_.fetch_or(kByLine);
    const std::int32_t line = currentLine(context);
    if (line > 0 && (policy_ != nullptr || isRun(context))) decide(context, line);
}

/// The same for some statements from one on whose function holds a breakpoint: where the line is
/// wanted anyway, asking for the function first would be in vain. False: the function is to be
/// asked.
bool LineCallback::passByLine(asIScriptContext& context) noexcept {
    const std::int32_t line = currentLine(context);
    if (line > 0 && !breakpoints_.contains(line) && isRun(context) && --byLineLeft_ > 0) {
        state_.lastStoppedLine = 0;
        return true;
    }
    attention_.fetch_and(~unsigned{kByLine});
    return false;
}

void LineCallback::endOnlyEntry(asIScriptContext* context, void* self) noexcept {
    auto& callback = *static_cast<LineCallback*>(self);
    if (context->GetState() == asEXECUTION_ACTIVE) callback.checkEnd(*context);
}

/// The engine calls once more when execution leaves the context; nothing is decided then. An
/// execution that the host started itself is not latched beyond its end.
void LineCallback::decideSlowly(asIScriptContext& context) noexcept {
    if (context.GetState() != asEXECUTION_ACTIVE) {
        if (!executing_ && policy_ == nullptr) ending_ = Ending::none;
        return;
    }
    const std::int32_t line = currentLine(context);
    // What is wanted may be to stop here.
    if ((attention_.load() & (kDue | kUnwatched)) != 0) giveAttention(context);
    if (line > 0 && (policy_ != nullptr || isRun(context))) decide(context, line);
    if ((attention_.load() & (kDue | kUnwatched)) != 0) lookAtEnd(context);
}

/// True when that is all. `breakpoint`: there is one on the line, which the policy may pass over.
bool LineCallback::passedByPolicy(asIScriptContext& context, std::int32_t line, bool& breakpoint) {
    if (!everyStatement() && !breakpoint && !steps(state_.stepMode)) return false;
    if (context.GetState() != asEXECUTION_ACTIVE) return true;
    const bool again = std::abs(state_.lastStoppedLine) == line;
    switch (policy_->atStatement(context, line, again)) {
        case StopPolicy::Answer::goOn:
            state_.lastStoppedLine = breakpoint ? line : 0;
            return true;
        case StopPolicy::Answer::suspend:
            stopAt(context, line);
            return true;
        case StopPolicy::Answer::pass:
            breakpoint = false;
            if (steps(state_.stepMode)) break;
            // Below 0: a line where a breakpoint of the run's own would stop still.
            state_.lastStoppedLine = -line;
            return true;
        case StopPolicy::Answer::usual:
            break;
    }
    return !isRun(context);
}

namespace {

/// Sections may go with their module: what is kept of one is a number.
std::size_t sourceOf(asIScriptContext& context) {
    const char* section = nullptr;
    context.GetLineNumber(0, nullptr, &section);
    return std::hash<std::string_view>{}(section != nullptr ? section : "");
}

/// Lists of lines are of the text that the run began in, and no other source of the script.
bool inFirstSource(asIScriptContext& context) {
    const asUINT depth = context.GetCallstackSize();
    const char* here = nullptr;
    const char* first = nullptr;
    if (depth < 2) return true;
    context.GetLineNumber(0, nullptr, &here);
    context.GetLineNumber(depth - 1, nullptr, &first);
    return here == first || here == nullptr || first == nullptr || std::strcmp(here, first) == 0;
}

}  // namespace

void LineCallback::decide(asIScriptContext& context, std::int32_t line) {
    bool breakpoint = breakpoints_.contains(line);
    if (policy_ != nullptr) {
        if (passedByPolicy(context, line, breakpoint)) return;
    } else if (breakpoint) {
        breakpoint = inFirstSource(context);
    }
    if (breakpoint) {
        if (isAnother(context, line)) stopAt(context, line);
    } else if (state_.stepMode == StepMode::over) {
        if (isOver(context, line)) stopAt(context, line);
    } else if (state_.stepMode == StepMode::into && isAnother(context, line)) {
        stopAt(context, line);
    } else {
        state_.lastStoppedLine = 0;
    }
}

/// A line of another source is another one whatever its number.
bool LineCallback::isAnother(asIScriptContext& context, std::int32_t line) const {
    return line != state_.lastStoppedLine || !inStoppedSource(context);
}

bool LineCallback::inStoppedSource(asIScriptContext& context) const {
    return currentFunction(context) == stoppedFunction_ || sourceOf(context) == stoppedIn_;
}

/// Deliberate: never stops on a line above the last one, so that stepping over the end of a loop's
/// body leaves the loop. What stands in another source is neither above nor below: that is left by
/// returning to it.
bool LineCallback::isOver(asIScriptContext& context, std::int32_t line) const {
    if (state_.lastStoppedLine > 0 && !inStoppedSource(context))
        return context.GetCallstackSize() < stoppedDepth_;
    return line > state_.lastStoppedLine;
}

/// Natives that called back into the script cannot wait for a suspended one: the engine restarts a
/// destructor, and a comparator leaves its context unusable. A policy may hold them.
void LineCallback::stopAt(asIScriptContext& context, std::int32_t line) {
    if (context.GetState() != asEXECUTION_ACTIVE) return;
    if (context.IsNested()) {
        if (policy_ == nullptr || !policy_->mayHold()) return;
        noteStop(context, line);
        state_.stepMode = StepMode::run;
        return policy_->atNestedStop(context);
    }
    noteStop(context, line);
    context.Suspend();
}

void LineCallback::noteStop(asIScriptContext& context, std::int32_t line) {
    state_.lastStoppedLine = line;
    stoppedFunction_ = currentFunction(context);
    stoppedIn_ = sourceOf(context);
    stoppedDepth_ = context.GetCallstackSize();
}

void LineCallback::lookAtEnd(asIScriptContext& context) {
    attention_.fetch_and(~unsigned{kDue});
    giveAttention(context);
    if (checkEnd(context)) {
        attend();
    } else if (watched_) {
        // False alarm: the limit moved while the watch thread raised it.
        if (off_ == &context) context.ClearLineCallback();
        watch_.rearm();
    }
}

/// `context`: that stands at a statement; null: it has been left.
bool LineCallback::findEnding(asIScriptContext* context) {
    if (ending_ == Ending::none) {
        if (state_.stopRequest.exchange(false)) {
            ending_ = Ending::stopped;
            report_.onStopped();
        } else if (limit_.expired()) {
            ending_ = Ending::timedOut;
            if (policy_ != nullptr && context != nullptr) policy_->beforeEnd(*context, false);
            report_.onTimedOut();
        } else if (outOfMemory()) {
            ending_ = Ending::outOfMemory;
            if (policy_ != nullptr && context != nullptr) policy_->beforeEnd(*context, true);
            report_.onTimedOut();
        }
    }
    return ending_ != Ending::none;
}

bool LineCallback::checkEnd(asIScriptContext& context) {
    if (!findEnding(&context)) return false;
    endedAt_ = {currentFunction(context), context.GetCallstackSize(), currentLine(context)};
    context.Abort();
    return true;
}

std::int32_t LineCallback::lineAtEnd(asIScriptContext& context) const {
    const bool same = ending_ != Ending::none && endedAt_.line > 0 &&
                      currentFunction(context) == endedAt_.function &&
                      context.GetCallstackSize() == endedAt_.depth;
    return same ? endedAt_.line : currentLine(context);
}

bool LineCallback::outOfMemory() const noexcept {
    return engineMemoryExceeded() || objects_.largest() > ObjectCount::kMost;
}

/// Where objects become many, a look every two milliseconds sees them in time.
std::uint32_t LineCallback::millisecondsLeft(std::uint32_t longest) {
    const int objects = objects_.largest();
    if (attentionDue() || state_.stopRequest || engineMemoryExceeded() ||
        objects > ObjectCount::kMost)
        return 0;
    const std::uint32_t every = policy_ != nullptr ? policy_->attentionEvery() : 0;
    if (every != 0) longest = std::min(longest, every);
    return limit_.millisecondsLeft(objects > ObjectCount::kMost / 4 ? 2 : longest);
}

/// Putting the callback back is what the engine offers to a second thread without a side effect:
/// a suspension would end a nested execution and break the native function under it.
void LineCallback::alert() {
    attend();
    outsideLately_ = false;
    if (off_ != nullptr) install(*off_);
    if (foreign_ != nullptr) foreign_->Abort();
}

/// The engine may have dropped its mark that a callback waits, at the end of a nested execution
/// that ended while alert() was at work. Only a context that was seen twice between native calls
/// is touched, so that the callback is never replaced while a statement is about to call it.
void LineCallback::insist() {
    if (foreign_ != nullptr) foreign_->Abort();  // a nested execution swallowed it
    if (off_ == nullptr || (attention_.load() & kDue) == 0) return;
    const bool outside = off_->GetSystemFunction() == nullptr;
    if (outside && outsideLately_) install(*off_);
    outsideLately_ = outside;
}

}  // namespace korvant
