#include "editor/stops/breakpoints.h"

#include "editor/control/control_setup.h"
#include "editor/control/output_pane.h"
#include "editor/stops/line_shift.h"

namespace korvant {

namespace {

constexpr int kMask = 1 << kBreakpointMarker;

struct MarkerLook {
    int symbol;
    std::intptr_t fore, back;
};
/// In the order of Look.
constexpr MarkerLook kLooks[] = {{sci::kMarkCircle, sci::rgb(0, 80, 0), sci::rgb(0, 255, 0)},
                                 {sci::kMarkArrow, sci::rgb(0, 80, 0), sci::rgb(0, 255, 0)},
                                 {sci::kMarkShortArrow, sci::rgb(80, 0, 0), sci::rgb(255, 0, 0)}};

}  // namespace

void Breakpoints::setLook(Look look) {
    look_ = look;
    shown();
}

void Breakpoints::shown() const {
    const MarkerLook& look = kLooks[static_cast<std::size_t>(look_)];
    editor_.send(sci::kMarkerDefine, kBreakpointMarker, look.symbol);
    editor_.send(sci::kMarkerSetFore, kBreakpointMarker, look.fore);
    editor_.send(sci::kMarkerSetBack, kBreakpointMarker, look.back);
}

void Breakpoints::setUp() {
    editor_.send(sci::kMarkerDefine, kWaitingMarker, sci::kMarkCircle);
    editor_.send(sci::kMarkerSetFore, kWaitingMarker, sci::rgb(0, 80, 0));
    editor_.send(sci::kMarkerSetBack, kWaitingMarker, sci::rgb(0, 255, 0));
    editor_.send(sci::kMarkerDefine, kConditionMarker, sci::kMarkCharacter + '?');
    editor_.send(sci::kMarkerSetFore, kConditionMarker, sci::rgb(0, 0, 0));
}

bool Breakpoints::isShown(ControlLine line) const {
    return editor_.hasMarker(line, arrows_ ? kWaitingMarker : kBreakpointMarker);
}

/// What marker 0 cannot show: breakpoints while it is an arrow, but not under the arrow itself, and
/// which of them have a condition.
void Breakpoints::showBeside() {
    editor_.deleteAllMarkers(kWaitingMarker);
    editor_.deleteAllMarkers(kConditionMarker);
    if (arrows_)
        for (const std::int32_t line : kept_)
            if (!editor_.hasMarker(toControl({line}), kBreakpointMarker))
                editor_.addMarker(toControl({line}), kWaitingMarker);
    for (const auto& [line, condition] : conditions_)
        if (isShown(toControl({line}))) editor_.addMarker(toControl({line}), kConditionMarker);
}

void Breakpoints::keep() {
    kept_.clear();
    for (auto line = editor_.nextMarker(0, kMask); line;
         line = editor_.nextMarker(line->index + 1, kMask)) {
        // Deliberate: the caret ends on the last breakpoint.
        editor_.gotoLine(*line);
        kept_.push_back(toScript(*line).number);
    }
}

void Breakpoints::restore() {
    setLook(Look::breakpoint);
    if (kept_.empty() && !arrows_) return;
    editor_.deleteAllMarkers(kBreakpointMarker);
    for (const std::int32_t line : kept_) editor_.addMarker(toControl({line}), kBreakpointMarker);
    kept_.clear();
    arrows_ = false;
    showBeside();
}

void Breakpoints::prepareRun() {
    // After a build with warnings alone the breakpoints are kept aside and no arrow is shown.
    if (!arrows_ && kept_.empty()) keep();
    arrows_ = false;
    editor_.deleteAllMarkers(kBreakpointMarker);
    showBeside();
}

void Breakpoints::becomeCurrentLine() {
    setLook(Look::currentLine);
    arrows_ = true;
}

void Breakpoints::becomeErrors() {
    setLook(Look::error);
    arrows_ = true;
}

void Breakpoints::markErrors(const std::vector<ScriptLine>& lines) {
    becomeErrors();
    for (const ScriptLine line : lines) editor_.addMarker(toControl(line), kBreakpointMarker);
    showBeside();
}

void Breakpoints::markCurrent(ControlLine line) {
    editor_.addMarker(line, kBreakpointMarker);
    showBeside();
}

void Breakpoints::toggle(ControlLine line) {
    if (editor_.hasMarker(line, kBreakpointMarker)) return remove(line);
    ensure(line);
    setCondition(toScript(line), {});
}

void Breakpoints::remove(ControlLine line) {
    restore();
    if (!editor_.hasMarker(line, kBreakpointMarker)) return;
    editor_.deleteMarker(line, kBreakpointMarker);
    setCondition(toScript(line), {});
}

void Breakpoints::ensure(ControlLine line) {
    if (!editor_.hasMarker(line, kBreakpointMarker)) set(line);
}

void Breakpoints::set(ControlLine line) {
    restore();
    // An arrow may just have become the breakpoint that was here before.
    if (!editor_.hasMarker(line, kBreakpointMarker)) editor_.addMarker(line, kBreakpointMarker);
    arrows_ = false;
}

void Breakpoints::gotoFound(std::optional<ControlLine> line) {
    if (line) editor_.gotoLine(*line);
}

void Breakpoints::gotoNext() {
    restore();
    gotoFound(editor_.nextMarker(editor_.caretLine().index + 1, kMask));
}

void Breakpoints::gotoPrevious() {
    restore();
    gotoFound(editor_.previousMarker(editor_.caretLine().index - 1, kMask));
}

void Breakpoints::deleteAll() {
    restore();
    editor_.deleteAllMarkers(kBreakpointMarker);
    clearConditions();
    showBeside();
}

std::string Breakpoints::condition(ScriptLine line) const {
    const auto found = conditions_.find(line.number);
    return found == conditions_.end() ? std::string() : found->second;
}

void Breakpoints::setCondition(ScriptLine line, std::string condition) {
    if (condition.empty())
        conditions_.erase(line.number);
    else
        conditions_[line.number] = cutUtf8(std::move(condition), kLongestCondition);
    showBeside();
}

void Breakpoints::reset() {
    clearConditions();
    kept_.clear();
    arrows_ = false;
    editor_.deleteAllMarkers(kBreakpointMarker);
    showBeside();
}

void Breakpoints::follow(const LineShift& shift) {
    shiftKeys(conditions_, shift);
    shiftLines(kept_, shift);
}

}  // namespace korvant
