// Several texts in the window: the tabs, and what goes and comes when another text is in view.
#include <wx/frame.h>
#include <wx/stc/stc.h>

#include "ui/editor/assist/text_assist.h"
#include "ui/editor/panels/breakpoint_box.h"
#include "ui/editor/panels/code_marks.h"
#include "ui/editor/panels/exception_box.h"
#include "ui/editor/panels/file_tabs.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/editor/panels/line_measures.h"
#include "ui/editor/panels/outline_pane.h"
#include "ui/editor/panels/welcome_pane.h"
#include "ui/editor/panels/workbench.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {

void Workbench::makeTabs() {
    FileTabs::Actions actions;
    actions.chosen = [this](std::uint64_t id) {
        editor_.showTab(id);
        refresh();
    };
    actions.closed = [this](std::uint64_t id) {
        editor_.closeTab(id);
        refresh();
    };
    actions.moved = [this](std::uint64_t id, std::size_t index) {
        editor_.moveTab(id, index);
        refresh();
    };
    actions.toText = [this] {
        if (controls_.text) controls_.text->SetFocus();
    };
    actions.functions = [this] {
        if (assist_) assist_->chooseFunction(true);
    };
    tabs_ = new FileTabs(&frame_, look_, std::move(actions));
    tabs_->Hide();
}

void Workbench::followTabs() {
    const std::vector<DocumentTab> open = editor_.tabs();
    if (!tabs_ && open.size() > 1) makeTabs();
    if (tabs_) tabs_->setTabs(open, editor_.shownTab());
    if (std::exchange(severalTexts_, open.size() > 1) != severalTexts_) layOut();
    if (severalTexts_) tabs_->setFunction(fromUtf8(outline_->pathAt(editor_.caretPosition())));
    const bool leftTour = editor_.shownTab() != tourTab_ || editor_.textLength() == 0 ||
                          !editor_.documentPath().empty();
    if (welcome_ && leftTour) welcome_->leaveTour();
}

/// Marks and boxes are those of the text in view; a text that goes takes none along.
void Workbench::textLeaves() {
    if (settings_.classic || !parted_ || !controls_.text) return;
    assist_->textLeaves();
    if (breakpointBox_) breakpointBox_->close();
    if (findBar_) findBar_->leave();
    marks_->showStop({});
    marks_->showBreakpoints({});
    marks_->showProblems({});
    measures_->show({});
    if (exceptionBox_) exceptionBox_->show(0, {}, {});
    exceptionLine_ = callerLine_ = 0;
}

/// Everything is looked at anew; a check that was under way is of another text.
void Workbench::textShown() {
    if (settings_.classic || !parted_ || !controls_.text) return;
    breakpointRows_.clear();
    shownStop_ = shownProblems_ = shownText_ = foundText_ = ~std::uint64_t{0};
    shownRun_ = ~std::uint64_t{0};
    shownBuild_ = editor_.problems().builds();
    marksRun_ = EditorStatus::Run::running;
    checkNote_ = noteOnText();
    folds_->forget();
    checkedClean_ = false;
    timedText_ = editor_.textVersion();
    marks_->typedAt(-1);
    outline_->setEntries({});
    assist_->setOutline({});
    assist_->textShown(editor_.shownTab());
    pause_.StartOnce(1);
}

}  // namespace korvant::ui
