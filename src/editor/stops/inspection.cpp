#include "editor/stops/inspection.h"

#include <exception>
#include <utility>

namespace korvant {

Inspection::Inspection(ScriptSession& session, Wait wait)
    : wait_(std::move(wait)), session_(session, *this) {
    session_.setStyle(StopStyle::suspendOnly);
    session_.rules() = StopRules::usual();
}

Inspection::~Inspection() {
    held_ = false;
}

void Inspection::setEnabled(bool enabled) {
    if (enabled == enabled_ && enabled == session_.attached()) return;
    endLooking();
    enabled_ = enabled;
    session_.setStyle(enabled ? StopStyle::suspend : StopStyle::suspendOnly);
    if (enabled)
        session_.attach();
    else
        session_.detach();
}

/// Between the runs of an editor that looks at nothing the host's own go as they always did.
void Inspection::beginRun() {
    if (!enabled_) session_.attach();
}

void Inspection::endRun() {
    if (enabled_) return;
    endLooking();
    session_.detach();
}

void Inspection::endLooking() {
    ++generation_;
    if (!std::exchange(looking_, false)) return;
    frame_ = 0;
    session_.values().end();
}

void Inspection::onBuilt() {
    try {
        if (onScriptBuilt) onScriptBuilt();
    } catch (const std::exception&) {
    }
}

void Inspection::onStopped(const StopInfo& info) {
    try {
        stop_ = info;
        looking_ = true;
        frame_ = 0;
        ++generation_;
        if (!enabled_) return;
        evaluateWatches(true);
        if (session_.state() != DebugState::held) return;
        held_ = true;
        goesOn_ = false;
        wait_([this] { return goesOn_; });
    } catch (const std::exception&) {
        // Without memory the run goes on.
    }
    held_ = false;
    if (session_.state() == DebugState::held) looking_ = false;
    ++generation_;
}

void Inspection::onContinued() {
    looking_ = false;
    ++generation_;
}

void Inspection::onOutput(const std::string& text, const ScriptPlace&, int) {
    try {
        if (onPrinted) onPrinted(text);
    } catch (const std::exception&) {
    }
}

void Inspection::onAttention() {
    try {
        if (onBreath) onBreath();
    } catch (const std::exception&) {
    }
}

void Inspection::onEnded(const RunFailure&) {
    looking_ = false;
    ++generation_;
    if (std::exchange(neverAgain_, false)) session_.rules().unhandled.enabled = true;
}

void Inspection::leaveHold() {
    goesOn_ = true;
    ++generation_;
}

void Inspection::goOn() {
    session_.goOn();
    leaveHold();
}

void Inspection::stepOver() {
    session_.stepOver();
    leaveHold();
}

void Inspection::stepInto() {
    session_.stepInto();
    leaveHold();
}

void Inspection::stepOut() {
    session_.stepOut();
    leaveHold();
}

/// Where there is no code behind the place it stays.
void Inspection::runTo(const ScriptPlace& place) {
    if (session_.runTo(place)) leaveHold();
}

void Inspection::end() {
    session_.stopRun();
    leaveHold();
}

/// For the rest of this run.
void Inspection::doNotStopAgain() {
    neverAgain_ = true;
    session_.rules().unhandled.enabled = false;
}

std::vector<DebugFrame> Inspection::stack() const {
    std::vector<DebugFrame> frames;
    if (!canLook()) return frames;
    const Frames& all = session_.frames();
    for (unsigned i = 0; i < all.count(); ++i) {
        frames.push_back(all.frame(i));
        ScriptPlace& place = frames.back().place;
        if (lineInText && place.source.empty() && place.line > 0)
            place.line = lineInText(place.line);
    }
    return frames;
}

void Inspection::linesMoved() {
    if (looking_) ++generation_;
}

void Inspection::chooseFrame(unsigned frame) {
    if (!canLook() || frame >= session_.frames().count()) return;
    frame_ = frame;
    evaluateWatches(false);
    ++generation_;
}

void Inspection::valuesChanged() {
    evaluateWatches(false);
    ++generation_;
}

void Inspection::evaluateWatches(bool isNewStop) {
    for (Watch& watch : watches_) evaluate(watch, isNewStop);
}

void Inspection::evaluate(Watch& watch, bool isNewStop) {
    const std::string before = watch.value.value;
    ShownValue shown = session_.show(frame_, watch.expression, EvaluationPurpose::watch);
    watch.error = std::move(shown.error);
    watch.value = std::move(shown.value);
    if (!watch.error.empty()) return;
    if (isNewStop) watch.was = before == watch.value.value ? std::string() : before;
}

void Inspection::addWatch(std::string expression) {
    if (expression.empty()) return;
    watches_.push_back({std::move(expression), {}, {}, {}});
    if (canLook()) evaluate(watches_.back(), false);
    ++generation_;
}

void Inspection::changeWatch(std::size_t index, std::string expression) {
    if (index >= watches_.size()) return;
    if (expression.empty()) return removeWatch(index);
    watches_[index] = {std::move(expression), {}, {}, {}};
    if (canLook()) evaluate(watches_[index], false);
    ++generation_;
}

void Inspection::removeWatch(std::size_t index) {
    if (index >= watches_.size()) return;
    watches_.erase(watches_.begin() + static_cast<std::ptrdiff_t>(index));
    ++generation_;
}

void Inspection::removeWatches() {
    watches_.clear();
    ++generation_;
}

}  // namespace korvant
