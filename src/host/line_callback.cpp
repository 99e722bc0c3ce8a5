#include "host/line_callback.h"

namespace korvant {

namespace {

constexpr std::int32_t kStepOver = 1;
constexpr std::int32_t kStepInto = 2;

bool steps(std::int32_t mode) {
    return mode == kStepOver || mode == kStepInto;
}

}  // namespace

int LineCallback::install(asIScriptContext& context) {
    return context.SetLineCallback(asFUNCTION(entry), this, asCALL_CDECL);
}

int LineCallback::installEndOnly(asIScriptContext& context) {
    return context.SetLineCallback(asFUNCTION(endOnlyEntry), this, asCALL_CDECL);
}

bool LineCallback::mayBeOff() const noexcept {
    return breakpoints_.empty() && !steps(state_.stepMode);
}

int LineCallback::execute(asIScriptContext& context, bool ours) {
    begin(context, ours);
    const int result = context.Execute();
    end();
    return result;
}

void LineCallback::begin(asIScriptContext& context, bool ours) {
    breakpoints_.forgetFunctions();
    executing_ = true;
    watched_ = watch_.start();
    attention_ = !watched_;
    if (ours && watched_ && mayBeOff()) {
        state_.lastStoppedLine = 0;
        off_ = &context;
        context.ClearLineCallback();
    }
    if (watched_) watch_.arm(*this);
}

void LineCallback::end() {
    if (watched_) watch_.disarm();
    if (off_ != nullptr) install(*off_);
    off_ = nullptr;
    attention_ = true;
    watched_ = false;
    executing_ = false;
}

void LineCallback::lookNow() {
    if (!watched_) return;
    if (state_.stopRequest || limit_.expired())
        watch_.alertNow();
    else
        watch_.lookAgain();
}

// The first line is all that most statements cost. Without a run of ours nobody watches, and
// attention_ stays set: hosts may execute the context themselves.
void LineCallback::entry(asIScriptContext* context, void* self) noexcept {
    auto& callback = *static_cast<LineCallback*>(self);
    if (!callback.attention_.load(std::memory_order_relaxed) && !steps(callback.state_.stepMode)) {
        asIScriptFunction* const function = currentFunction(*context);
        if (function != nullptr && !callback.breakpoints_.mayStopIn(function)) {
            callback.state_.lastStoppedLine = 0;
            return;
        }
    }
    callback.decideSlowly(*context);
}

void LineCallback::endOnlyEntry(asIScriptContext* context, void* self) noexcept {
    auto& callback = *static_cast<LineCallback*>(self);
    if (context->GetState() == asEXECUTION_ACTIVE) callback.checkEnd(*context);
}

/// The engine calls once more when execution leaves the context; nothing is decided then. An
/// execution that the host started itself is not latched beyond its end.
void LineCallback::decideSlowly(asIScriptContext& context) {
    if (context.GetState() != asEXECUTION_ACTIVE) {
        if (!executing_) ending_ = Ending::none;
        return;
    }
    const bool runs = state_.currentContext == nullptr || state_.currentContext == &context;
    if (const std::int32_t line = currentLine(context); runs && line > 0) decide(context, line);
    if (attention_.load()) lookAtEnd(context);
}

void LineCallback::decide(asIScriptContext& context, std::int32_t line) {
    std::int32_t& last = state_.lastStoppedLine;
    if (breakpoints_.contains(line)) {
        if (line != last) stopAt(context, line);
    } else if (state_.stepMode == kStepOver) {
        // Deliberate: never stops on a line above the last one, so that stepping over the end of a
        // loop's body leaves the loop.
        if (line > last) stopAt(context, line);
    } else if (state_.stepMode == kStepInto && line != last) {
        stopAt(context, line);
    } else {
        last = 0;
    }
}

/// Natives that called back into the script cannot wait: the engine restarts a destructor, and a
/// suspended comparator leaves its context unusable.
void LineCallback::stopAt(asIScriptContext& context, std::int32_t line) {
    if (context.IsNested()) return;
    state_.lastStoppedLine = line;
    context.Suspend();
}

void LineCallback::lookAtEnd(asIScriptContext& context) {
    if (watched_) attention_.store(false);
    if (checkEnd(context)) {
        attention_.store(true);
    } else if (watched_) {
        // False alarm: the limit moved while the watch thread raised it.
        if (off_ == &context) context.ClearLineCallback();
        watch_.rearm();
    }
}

bool LineCallback::checkEnd(asIScriptContext& context) {
    if (ending_ == Ending::none) {
        if (state_.stopRequest.exchange(false)) {
            ending_ = Ending::stopped;
            report_.onStopped();
        } else if (limit_.expired()) {
            ending_ = Ending::timedOut;
            report_.onTimedOut();
        }
    }
    if (ending_ == Ending::none) return false;
    context.Abort();
    return true;
}

std::uint32_t LineCallback::millisecondsLeft(std::uint32_t longest) {
    return state_.stopRequest ? 0 : limit_.millisecondsLeft(longest);
}

/// Putting the callback back is what the engine offers to a second thread without a side effect:
/// a suspension would end a nested execution and break the native function under it.
void LineCallback::alert() {
    attention_.store(true);
    outsideLately_ = false;
    if (off_ != nullptr) install(*off_);
}

/// The engine may have dropped its mark that a callback waits, at the end of a nested execution
/// that ended while alert() was at work. Only a context that was seen twice between native calls
/// is touched, so that the callback is never replaced while a statement is about to call it.
void LineCallback::insist() {
    if (off_ == nullptr || !attention_.load()) return;
    const bool outside = off_->GetSystemFunction() == nullptr;
    if (outside && outsideLately_) install(*off_);
    outsideLately_ = outside;
}

}  // namespace korvant
