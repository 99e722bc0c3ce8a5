// What the parts around the text show of the editor's state.
#include <wx/frame.h>
#include <wx/stc/stc.h>

#include <algorithm>

#include "editor/control/fold_levels.h"
#include "ui/editor/assist/suggestion_pop_up.h"
#include "ui/editor/assist/text_assist.h"
#include "ui/editor/panels/bottom_panes.h"
#include "ui/editor/panels/code_marks.h"
#include "ui/editor/panels/console_pane.h"
#include "ui/editor/panels/debug_panel.h"
#include "ui/editor/panels/exception_box.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/editor/panels/live_check.h"
#include "ui/editor/panels/outline_pane.h"
#include "ui/editor/panels/problem_list.h"
#include "ui/editor/panels/time_used.h"
#include "ui/editor/panels/workbench.h"
#include "ui/kit/clipboard.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

using Run = EditorStatus::Run;

constexpr int kPauseInTyping = 500;  // milliseconds, before anything has been checked

bool standsStill(Run run) {
    return run == Run::stopped || run == Run::exception;
}

BreakpointRow rowOf(const PlannedBreakpoint& planned) {
    using Kind = BreakpointRow::Kind;
    const BreakpointWishes& wishes = planned.wishes;
    BreakpointRow row;
    row.line = planned.line;
    row.enabled = wishes.enabled;
    if (!wishes.enabled) {
        row.kind = Kind::off;
        row.remark = toUtf8(words("switched off"));
    } else if (!wishes.prints.empty()) {
        row.kind = Kind::prints;
        row.remark = toUtf8(words("prints ")) + "\u201c" + wishes.prints + "\u201d";
    } else if (!wishes.condition.empty() || !planned.classicCondition.empty()) {
        row.kind = Kind::condition;
        row.remark = toUtf8(words("when ")) +
                     (wishes.condition.empty() ? planned.classicCondition : wishes.condition);
    } else if (wishes.passes > 0) {
        row.kind = Kind::condition;
        row.remark = toUtf8(wxString::Format(words("after %d passes"), int(wishes.passes)));
    }
    if (wishes.enabled && !planned.verified) {
        row.kind = Kind::unverified;
        row.remark = toUtf8(words("no code on this line"));
    }
    return row;
}

}  // namespace

void Workbench::refresh() {
    if (!begun_ || settings_.classic) return;
    if (liveCheck_) liveCheck_->tellRest();
    const EditorStatus status = editor_.status();
    followTabs();
    if (shownBlack_ != editor_.blackBackground()) applyLook();
    followRun(status);
    followConsole(status);
    followProblems();
    followBreakpoints();
    if (editor_.textVersion() != timedText_) {
        timedText_ = editor_.textVersion();
        checkNote_ = noteOnText();
        checkedClean_ = false;
        if (marks_ && controls_.text->HasFocus()) marks_->typedAt(controls_.text->GetCurrentPos());
        pause_.StartOnce(shownText_ == ~std::uint64_t{0} ? 1
                         : liveCheck_                    ? liveCheck_->pause()
                                                         : kPauseInTyping);
    }
    if (!textIsLong()) followFound();
    bottom_->setOutputRemark(editor_.outputEmpty());
    const bool asked = std::exchange(shownWaiting_, console_->waiting()) != console_->waiting();
    if (status == shown_ && !asked) return;
    const bool relaid = status.run != shown_.run, zoomed = status.zoom != shown_.zoom;
    shown_ = status;
    if (relaid) layOut();
    if (zoomed) {
        const bool seen = exceptionIsSeen();
        textMoved();
        if (seen) showWholeException();
    }
    refreshToolbar(status);
    refreshStatus(status);
    outline_->setCaret(editor_.caretPosition());
}

/// The panel opens at a stop, unless it was closed by hand in this run, and goes with the run.
void Workbench::followRun(const EditorStatus& status) {
    // A run that stops at once is never seen running.
    const bool isNewRun = status.run != Run::idle && shown_.run == Run::idle;
    if (isNewRun) closedByHand_ = false;
    if (status.run != Run::running) runNote_.clear();
    if (status.run == Run::running) runLimit_ = status.limitMilliseconds;
    if (standsStill(status.run) && !standsStill(shown_.run) && !sideShown_ && !closedByHand_) {
        sideByStop_ = true;
        welcomeShown_ = false;
        showSide(true);
    }
    if (status.run == Run::idle && shown_.run != Run::idle && std::exchange(sideByStop_, false))
        showSide(false);
    const bool isOther = status.run != shown_.run || editor_.measures().runs() != shownRun_;
    if (isOther && status.run != Run::running) {
        shownRun_ = editor_.measures().runs();
        showMeasures();
    }
    followStop(status);
}

void Workbench::followStop(const EditorStatus& status) {
    const std::uint64_t now = editor_.inspection().generation();
    const bool edited = standsStill(status.run) && editor_.changedSinceRun();
    const bool changed = status.stoppedLine != shown_.stoppedLine || status.run != shown_.run ||
                         std::exchange(shownEdited_, edited) != edited;
    if (!changed && now == shownStop_) return;
    shownStop_ = now;
    if (assist_) assist_->stopChanged();
    showStop(status);
    if (standsStill(status.run)) refreshStatus(status);
}

void Workbench::showStop(const EditorStatus& status) {
    if (!marks_) return;
    StopMark mark;
    const Inspection& inspection = editor_.inspection();
    if (standsStill(status.run)) {
        mark.line = status.stopInView ? status.stoppedLine : 0;
        mark.isException = status.run == Run::exception;
        const std::vector<DebugFrame> stack = inspection.stack();
        const unsigned frame = inspection.frame();
        if (frame > 0 && frame < stack.size()) mark.caller = editor_.lineInView(stack[frame].place);
        if (frame == 0 && mark.isException && stack.size() > 1)
            mark.calledFrom = editor_.lineInView(stack[1].place);
        mark.edited = editor_.changedSinceRun();
    }
    marks_->showStop(mark);
    if (std::exchange(callerLine_, mark.caller) != mark.caller && mark.caller > 0) {
        controls_.text->EnsureVisibleEnforcePolicy(mark.caller - 1);
        controls_.text->GotoLine(mark.caller - 1);
    }
    const int line = mark.isException ? mark.line : 0;
    if (line == exceptionLine_) return;
    const bool moved = exceptionLine_ > 0 && line > 0 && mark.edited;
    exceptionLine_ = line;
    ExceptionBox& box = exceptionBox();
    if (moved) return box.moveTo(line);
    box.show(line, fromUtf8(inspection.stop().text),
             line == 0 ? wxString() : fromUtf8(editor_.explainException()));
    if (line == 0) return;
    controls_.text->GotoLine(line - 1);
    // Half way down, or higher where the box below it would not fit.
    const int lines = controls_.text->LinesOnScreen();
    const int above = std::clamp(lines - 1 - box.rows(), 0, (lines + 1) / 2);
    controls_.text->SetFirstVisibleLine(
        std::max(controls_.text->VisibleFromDocLine(line - 1) - above, 0));
    box.place();
}

/// Back from a caller.
void Workbench::showStopLine() {
    const EditorStatus status = editor_.status();
    if (!status.stopInView) return;
    controls_.text->EnsureVisibleEnforcePolicy(status.stoppedLine - 1);
    controls_.text->GotoLine(status.stoppedLine - 1);
    if (exceptionLine_ > 0) showWholeException();
}

bool Workbench::exceptionIsSeen() const {
    if (exceptionLine_ == 0 || !exceptionBox_ || !exceptionBox_->IsShown()) return false;
    const wxStyledTextCtrl& text = *controls_.text;
    const int y = exceptionBox_->GetPosition().y;
    return y > 0 && y <= text.GetClientSize().y;
}

/// As far as the line above it stays in view, too.
void Workbench::showWholeException() {
    exceptionBox_->place();
    wxStyledTextCtrl& text = *controls_.text;
    const int row = std::max(text.TextHeight(0), 1);
    const int beyond = exceptionBox_->GetRect().GetBottom() + 1 - text.GetClientSize().y;
    const int above = text.PointFromPosition(text.PositionFromLine(exceptionLine_ - 1)).y / row;
    const int rows = std::min((beyond + row - 1) / row, above);
    if (rows <= 0) return;
    text.LineScroll(0, rows);
    exceptionBox_->place();
}

/// Scripts print into the pane where there is one. A pane without content goes when the run is
/// over.
void Workbench::followConsole(const EditorStatus& status) {
    const bool isIdle = status.run == Run::idle;
    if (isIdle) consoleClosed_ = false;
    if (isIdle && !console_->lent()) console_->lend(true);
    if (isIdle && shown_.run != Run::idle && console_->empty())
        bottom_->open(BottomPanes::Pane::console, false);
}

native::UsableParts Workbench::usableWhileBusy() const {
    if (settings_.classic) return {};
    native::UsableParts usable;
    usable.clicks = bottom_->headings();
    usable.clicks.push_back(toolbar_);
    usable.clicks.push_back(console_);
    usable.keys = console_->madeCanvas();
    return usable;
}

/// Keys that are held down together mean what they always do, and so does the one that pauses.
bool Workbench::keyIsForConsole(const wxKeyEvent& event, const EditorCommand* command) const {
    if (settings_.classic || !console_->inUse() || !console_->canvas().HasFocus()) return false;
    const bool plain = !event.ControlDown() && !event.AltDown() && !event.ShiftDown();
    return !command || (plain && command->id != command_id::kPause);
}

void Workbench::followProblems() {
    const Problems& problems = editor_.problems();
    if (problems.generation() == shownProblems_) return;
    shownProblems_ = problems.generation();
    problemList_->rowsChanged();
    bottom_->setProblemCount(problems.errors() + problems.warnings());
    if (marks_ && problems.builds() != shownBuild_) marks_->typedAt(-1);
    if (marks_) marks_->showProblems(problems.all());
    const bool built = std::exchange(shownBuild_, problems.builds()) != problems.builds();
    if (built) checkedClean_ = problems.empty() && editor_.onlyChecked();
    if (built && problems.errors() > 0) bottom_->show(BottomPanes::Pane::problems);
    if (problems.all().empty()) bottom_->open(BottomPanes::Pane::problems, false);
    refreshStatus(shown_);
}

void Workbench::followBreakpoints() {
    std::vector<BreakpointRow> rows;
    for (const PlannedBreakpoint& planned : editor_.plannedBreakpoints())
        rows.push_back(rowOf(planned));
    if (rows != breakpointRows_ || shown_.run != marksRun_) {
        marksRun_ = shown_.run;
        breakpointRows_ = rows;
        if (marks_) marks_->showBreakpoints(rows);
    }
    if (side_) side_->refresh(breakpointRows_);
}

/// The user has paused: what needs the whole text is read anew.
void Workbench::followText() {
    if (settings_.classic) return;
    shownText_ = editor_.textVersion();
    followFound();
    if (!textIsLong()) {
        checksItself_ = true;
        return checkText();
    }
    // What was found in it before it was so long is no longer looked after.
    if (std::exchange(checksItself_, false)) editor_.setProblems({});
}

bool Workbench::textIsLong() const {
    return assist_ && assist_->textIsLong();
}

wxString Workbench::noteOnText() const {
    return textIsLong() ? words("A long script: F7 checks it") : wxString();
}

void Workbench::followFound() {
    if (!findShown_ || editor_.textVersion() == foundText_) return;
    foundText_ = editor_.textVersion();
    findBar_->textChanged();
}

/// Of a text that has changed meanwhile the next pause tells.
void Workbench::showOutline(std::uint64_t version, const ScopeIndex& index) {
    if (settings_.classic || version != editor_.textVersion()) return;
    folds_->show(index);
    std::vector<OutlineEntry> entries = editor_.useIndex(index);
    assist_->setOutline(entries);
    outline_->list()->setEmptyText({});
    outline_->setEntries(std::move(entries));
    outline_->setCaret(editor_.caretPosition());
}

void Workbench::showNoOutline() {
    if (settings_.classic) return;
    foldByLexer(editor_.textControl());
    assist_->setOutline({});
    outline_->list()->setEmptyText(words("Long: Ctrl+Shift+O"));
    outline_->setEntries({});
}

void Workbench::checkText() {
    if (!liveCheck_) {
        liveCheck_ = std::make_unique<LiveCheck>(frame_, editor_);
        liveCheck_->growing = [this] {
            const wxStyledTextCtrl& text = *controls_.text;
            const int caret = text.GetCurrentPos(), line = text.LineFromPosition(caret);
            const int column = caret - text.PositionFromLine(line);
            return offersNames() ? LiveCheck::WordPlace{line + 1, column + 1}
                                 : LiveCheck::WordPlace();
        };
        liveCheck_->onAnswer = [this] {
            refresh();
            goToAwaitedProblem();
        };
        liveCheck_->onNote = [this](const std::string& why) {
            checkNote_ = fromUtf8(why);
            refreshStatus(shown_);
        };
    }
    liveCheck_->begin();
}

bool Workbench::offersNames() const {
    const SuggestionPopUp* const offered = assist_ ? assist_->suggestionPopUp() : nullptr;
    return offered && offered->IsShown();
}

/// Marks that were kept back come when the caret leaves the word.
void Workbench::followWord() {
    if (marks_->leftWord() && liveCheck_ && liveCheck_->isCurrent())
        marks_->showProblems(editor_.problems().all());
}

void Workbench::textNotified(const ControlNotification& notification) {
    if (settings_.classic || !assist_) return;
    folds_->notified(notification);
    assist_->notified(notification);
}

bool Workbench::takesKey(const KeyPress& key) {
    return !settings_.classic && assist_ && assist_->key(key);
}

void Workbench::textMoved() {
    if (settings_.classic || !parted_) return;
    if (marks_) {
        marks_->textMoved();
        followWord();
    }
    if (exceptionLine_ > 0) exceptionBox_->place();
}

bool Workbench::takesMessage(unsigned message, std::uintptr_t w, std::intptr_t l) {
    return marks_ && marks_->takesMessage(message, w, l);
}

void Workbench::explainException() {
    editor_.helpOnException();
}

void Workbench::copyException() {
    copyToClipboard(fromUtf8(editor_.inspection().stop().text));
}

wxString Workbench::functionAtStop() const {
    const std::vector<DebugFrame> stack = editor_.inspection().stack();
    return stack.empty() ? wxString() : words(" in ") + fromUtf8(stack.front().name);
}

bool Workbench::isEnabled(int command) const {
    const EditorCommand* const record = findCommand(command);
    return record && editor_.enabled(*record);
}

/// What was pressed has to wait for the script.
void Workbench::toolPressed(int command) {
    const bool waits = shown_.run == Run::running && !isEnabled(command);
    command_(command);
    refresh();
    if (!waits) return;
    runNote_ = words("Pause or stop the script first");
    refreshStatus(shown_);
}

void Workbench::refreshToolbar(const EditorStatus& status) {
    ToolbarState state;
    state.run = status.run;
    // While a script runs, whoever presses is told what to do first.
    state.canOpen = status.run == Run::running || isEnabled(command_id::kOpen);
    state.canSave = status.modified;
    state.canUndo = status.canUndo;
    state.canRedo = status.canRedo;
    state.words = layout_.stepWords;
    state.outline = settings_.outline;
    state.bottom = settings_.bottom;
    state.side = sideShown_ || welcomeShown_;
    state.find = findShown_;
    state.runMilliseconds = status.runMilliseconds;
    state.limitMilliseconds = status.limitMilliseconds;
    toolbar_->setState(state);
}

StatusLine::Content Workbench::statusContent(const EditorStatus& status) const {
    StatusLine::Content content;
    const Problems& problems = editor_.problems();
    content.text = checkedClean_ ? words("No problems found") : words("Ready");
    if (status.run == Run::idle && problems.empty() && editor_.runTimedOut()) {
        content.icon = Icon::clock;
        content.iconColour = &ThemeTable::warning;
        content.text = wxString::Format(words("The run took %s, the time allowed, and was ended."),
                                        limitText(runLimit_));
    }
    if (status.run == Run::running) {
        content.icon = Icon::run;
        content.text =
            console_->waiting() ? words("Running: waits for what you type") : words("Running");
    } else if (status.run == Run::stopped) {
        content.icon = Icon::pause;
        content.iconColour = &ThemeTable::stopMark;
        content.back = &ThemeTable::stopBand;
        const bool paused = editor_.inspection().stop().reason == StopReason::pause;
        content.text =
            wxString::Format(paused ? words("Paused at line %d") : words("Stopped at line %d"),
                             status.stoppedLine) +
            functionAtStop();
    } else if (status.run == Run::exception) {
        content.icon = Icon::bolt;
        content.iconColour = &ThemeTable::error;
        content.back = &ThemeTable::errorBand;
        const wxString why = fromUtf8(editor_.inspection().stop().text);
        const wxString sentence = why.EndsWith(".") ? why.Left(why.size() - 1) : why;
        content.text = words("Stopped: ") + sentence +
                       wxString::Format(words(", line %d"), status.stoppedLine) + functionAtStop() +
                       words(". F5 lets the script end.");
    } else if (!problems.empty()) {
        content.icon = problems.errors() > 0 ? Icon::error : Icon::warning;
        content.iconColour = problems.errors() > 0 ? &ThemeTable::error : &ThemeTable::warning;
        content.text = fromUtf8(problems.summary());
        const Diagnostic* const here = problems.onLine(status.line);
        content.remark = here ? fromUtf8(here->text) : words("F8 goes to the next");
    }
    if (status.run == Run::idle && problems.empty()) content.remark = checkNote_;
    if (status.run == Run::running) content.remark = runNote_;
    if (standsStill(status.run) && editor_.changedSinceRun())
        content.remark = words("The text has changed since the run began");
    content.right = {wxString::Format(words("Line %d, column %d"), status.line, status.column),
                     fromUtf8(status.encoding), wxString::Format("%d %%", status.zoom)};
    return content;
}

void Workbench::refreshStatus(const EditorStatus& status) {
    statusLine_->setContent(statusContent(status));
}

}  // namespace korvant::ui
