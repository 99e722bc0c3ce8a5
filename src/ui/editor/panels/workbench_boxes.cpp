// The parts of the window that are made when they are first wanted.
#include <wx/frame.h>
#include <wx/stc/stc.h>

#include <algorithm>

#include "ui/editor/panels/breakpoint_box.h"
#include "ui/editor/panels/debug_panel.h"
#include "ui/editor/panels/exception_box.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/editor/panels/workbench.h"
#include "ui/kit/edge_grip.h"

namespace korvant::ui {

DebugPanelActions Workbench::sideActions() {
    DebugPanelActions actions;
    actions.gotoLine = [this](int line) { editor_.gotoScriptLine(line); };
    actions.removeBreakpoint = [this](int line) {
        editor_.editBreakpoints([line](BreakpointPlan& plan) { plan.remove(line); });
    };
    actions.switchBreakpoint = [this](int line) {
        editor_.editBreakpoints([line](BreakpointPlan& plan) { plan.switchOnOff(line); });
    };
    actions.removeBreakpoints = [this] {
        editor_.editBreakpoints([](BreakpointPlan& plan) { plan.removeAll(); });
    };
    actions.switchBreakpoints = [this] {
        editor_.editBreakpoints([](BreakpointPlan& plan) { plan.switchAll(); });
    };
    actions.closed = [this] {
        closedByHand_ = true;
        showSide(false);
    };
    actions.frameChosen = [this](unsigned frame, bool entered) {
        editor_.showFrame(frame);
        shownStop_ = ~std::uint64_t{0};
        refresh();
        if (frame == 0) showStopLine();
        if (entered) controls_.text->SetFocus();
    };
    actions.fileOf = [this](const ScriptPlace& place) { return editor_.fileOf(place); };
    actions.editBreakpoint = [this](int line) { editBreakpoint(line); };
    return actions;
}

DebugPanel& Workbench::side() {
    if (side_) return *side_;
    side_ = new DebugPanel(&frame_, look_, editor_.inspection(), sideActions());
    side_->setFolded(settings_.foldedSections);
    for (const int section : {DebugPanel::kStack, DebugPanel::kVariables, DebugPanel::kWatches,
                              DebugPanel::kBreakpoints})
        makeEdgeGrip(*side_->list(section), wxLEFT, [this](int moved) {
            settings_.sideWidth = std::max(layout_.side.width - 1 - frame_.ToDIP(moved), 1);
            layOut();
        });
    side_->refresh(breakpointRows_);
    return *side_;
}

FindBar& Workbench::findBar() {
    if (findBar_) return *findBar_;
    findBar_ = new FindBar(
        &frame_, look_, *controls_.text, settings_, [this] { layOut(); }, [this] { closeFind(); });
    findBar_->Hide();
    findBar_->applyLook();
    return *findBar_;
}

BreakpointBox& Workbench::breakpointBox() {
    if (breakpointBox_) return *breakpointBox_;
    BreakpointBox::Actions actions;
    actions.done = [this](int line, const BreakpointWishes& wishes) {
        editor_.changeBreakpoint(line, wishes);
    };
    actions.remove = [this](int line) {
        editor_.editBreakpoints([line](BreakpointPlan& plan) { plan.remove(line); });
    };
    actions.closed = [this] { controls_.text->SetFocus(); };
    breakpointBox_ = new BreakpointBox(frame_, *controls_.text, look_, std::move(actions));
    return *breakpointBox_;
}

ExceptionBox& Workbench::exceptionBox() {
    if (!exceptionBox_)
        exceptionBox_ =
            new ExceptionBox(*controls_.text, look_,
                             {[this] { explainException(); }, [this] { copyException(); },
                              [this] { editor_.inspection().doNotStopAgain(); }});
    return *exceptionBox_;
}

}  // namespace korvant::ui
