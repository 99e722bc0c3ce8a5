#include "editor/stops/breakpoint_plan.h"

#include <algorithm>

#include "editor/control/control_setup.h"

namespace korvant {

/// While a script runs or stands still the markers are the arrow's, and the lines are kept aside.
std::vector<std::int32_t> BreakpointPlan::classicLines() const {
    if (breakpoints_.markersAreArrows() || !breakpoints_.kept().empty()) return breakpoints_.kept();
    std::vector<std::int32_t> lines;
    constexpr int kMask = 1 << kBreakpointMarker;
    for (auto line = editor_.nextMarker(0, kMask); line;
         line = editor_.nextMarker(line->index + 1, kMask))
        lines.push_back(toScript(*line).number);
    return lines;
}

const BreakpointPlan::Planned* BreakpointPlan::find(std::int32_t line) const {
    const auto found = std::find_if(planned_.begin(), planned_.end(),
                                    [line](const Planned& one) { return one.line == line; });
    return found == planned_.end() ? nullptr : &*found;
}

void BreakpointPlan::put(std::int32_t line, const BreakpointWishes& wishes) {
    std::erase_if(planned_, [line](const Planned& one) { return one.line == line; });
    if (!wishes.plain()) planned_.push_back({line, wishes});
}

BreakpointWishes BreakpointPlan::wishesAt(std::int32_t line) const {
    const Planned* planned = find(line);
    return planned ? planned->wishes : BreakpointWishes();
}

bool BreakpointPlan::has(std::int32_t line) const {
    const std::vector<std::int32_t> lines = classicLines();
    if (std::find(lines.begin(), lines.end(), line) != lines.end()) return true;
    const Planned* planned = find(line);
    return planned && !planned->wishes.enabled;
}

std::vector<PlannedBreakpoint> BreakpointPlan::all(const CodeLines* code,
                                                   const std::string& source) const {
    std::vector<PlannedBreakpoint> all;
    for (const std::int32_t line : classicLines())
        all.push_back({line, wishesAt(line), breakpoints_.condition(ScriptLine{line}), true});
    for (const Planned& planned : planned_)
        if (!planned.wishes.enabled) all.push_back({planned.line, planned.wishes, {}, true});
    for (PlannedBreakpoint& one : all)
        if (code) one.verified = code->hasCode(source, one.line);
    std::sort(all.begin(), all.end(), [](const PlannedBreakpoint& a, const PlannedBreakpoint& b) {
        return a.line < b.line;
    });
    return all;
}

/// One that is switched off has no marker, so that no run looks at it.
void BreakpointPlan::change(std::int32_t line, const BreakpointWishes& wishes) {
    const ControlLine place = toControl({line});
    const std::vector<std::int32_t> lines = classicLines();
    const bool isThere = std::find(lines.begin(), lines.end(), line) != lines.end();
    if (wishes.enabled)
        isThere ? breakpoints_.ensure(place) : breakpoints_.set(place);
    else
        breakpoints_.remove(place);
    put(line, wishes);
}

void BreakpointPlan::remove(std::int32_t line) {
    breakpoints_.remove(toControl({line}));
    put(line, {});
}

void BreakpointPlan::toggle(std::int32_t line) {
    const Planned* planned = find(line);
    const bool isOff = planned && !planned->wishes.enabled;
    put(line, {});
    if (!isOff) breakpoints_.toggle(toControl({line}));
}

void BreakpointPlan::switchOnOff(std::int32_t line) {
    BreakpointWishes wishes = wishesAt(line);
    wishes.enabled = !wishes.enabled;
    change(line, wishes);
}

void BreakpointPlan::switchAll() {
    const std::vector<PlannedBreakpoint> present = all(nullptr);
    const bool anyOff =
        std::any_of(present.begin(), present.end(),
                    [](const PlannedBreakpoint& one) { return !one.wishes.enabled; });
    for (PlannedBreakpoint one : present) {
        one.wishes.enabled = anyOff;
        change(one.line, one.wishes);
    }
}

void BreakpointPlan::removeAll() {
    planned_.clear();
    breakpoints_.deleteAll();
}

namespace {

BreakpointWish wishOf(std::int32_t line, const BreakpointWishes& wishes) {
    BreakpointWish wish;
    wish.place.line = line;
    wish.condition = wishes.condition;
    if (wishes.passes > 0) wish.hitCondition = ">=" + std::to_string(wishes.passes);
    wish.logText = wishes.prints;
    return wish;
}

}  // namespace

std::vector<BreakpointWish> BreakpointPlan::refined() const {
    std::vector<BreakpointWish> wishes;
    for (const Planned& planned : planned_)
        if (planned.wishes.enabled) wishes.push_back(wishOf(planned.line, planned.wishes));
    return wishes;
}

std::vector<BreakpointWish> BreakpointPlan::active() const {
    std::vector<BreakpointWish> wishes;
    for (const PlannedBreakpoint& one : all(nullptr))
        if (one.wishes.enabled) wishes.push_back(wishOf(one.line, one.wishes));
    return wishes;
}

void BreakpointPlan::follow(const LineShift& shift) {
    for (Planned& planned : planned_) planned.line = shifted(planned.line, shift);
    std::erase_if(planned_, [](const Planned& one) { return one.line <= 0; });
}

}  // namespace korvant
