#include "ui/editor/panels/workbench.h"

#include <wx/frame.h>
#include <wx/menu.h>
#include <wx/stc/stc.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <utility>

#include "ui/editor/assist/text_assist.h"
#include "ui/editor/panels/bottom_panes.h"
#include "ui/editor/panels/breakpoint_box.h"
#include "ui/editor/panels/code_marks.h"
#include "ui/editor/panels/console_pane.h"
#include "ui/editor/panels/debug_panel.h"
#include "ui/editor/panels/exception_box.h"
#include "ui/editor/panels/file_tabs.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/editor/panels/line_measures.h"
#include "ui/editor/panels/live_check.h"
#include "ui/editor/panels/outline_pane.h"
#include "ui/editor/panels/problem_list.h"
#include "ui/editor/panels/welcome_pane.h"
#include "ui/kit/edge_grip.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

constexpr int kOutputMargin = 12;

}  // namespace

Workbench::Workbench(wxFrame& frame, ScriptEditor& editor, EditorControls controls,
                     std::function<void(int)> command)
    : frame_(frame),
      editor_(editor),
      controls_(controls),
      command_(std::move(command)),
      settings_(loadEditorSettings()) {
    keepClassic_ = settings_.classic;
    if (editorLayout() != EditorLayoutWish::users)
        settings_.classic = editorLayout() == EditorLayoutWish::classic;
    useSystemFonts(look_);
}

Workbench::~Workbench() {
    if (console_) console_->lend(false);
}

void Workbench::begin() {
    begun_ = true;
    darkWatch_ = std::make_unique<native::DarkWatch>([this] {
        if (settings_.theme == ThemeChoice::system && !settings_.classic) systemColoursChanged();
    });
    if (!settings_.classic) makeParts();
    applyLook();
    editor_.recallFile();
    if (settings_.zoom != 0 && !settings_.classic) editor_.setZoom(settings_.zoom);
    showChecks();
    layOut();
    refresh();
}

/// In the classic layout there are none, so that a host that wants it gets no more than it had.
void Workbench::makeParts() {
    if (std::exchange(parted_, true)) return;
    toolbar_ = new MainToolbar(&frame_, look_, [this](int id) { toolPressed(id); });
    statusLine_ = new StatusLine(&frame_, look_);
    statusLine_->onPressed = [this] {
        if (!editor_.problems().empty()) bottom_->show(BottomPanes::Pane::problems);
    };
    makeBottom();
    makeOutline();
    makeMarks();
    makeWelcome();
    if (controls_.output) controls_.output->SetMarginLeft(frame_.FromDIP(kOutputMargin));
}

void Workbench::makeBottom() {
    bottom_ = std::make_unique<BottomPanes>(
        frame_, look_, controls_.output,
        [this](BottomPanes::Pane pane) {
            if (pane == BottomPanes::Pane::output) editor_.clearOutput();
            if (pane == BottomPanes::Pane::console) console_->clear();
        },
        [this] { layOut(); });
    bottom_->onOutputClosed = [this] { toggle(&EditorSettings::bottom); };
    makeEdgeGrip(*bottom_->outputHeading(), wxUP, [this](int moved) {
        const int height = settings_.bottomHeight > 0 ? settings_.bottomHeight : kOutputTextHeight;
        settings_.bottomHeight = std::max(height - frame_.ToDIP(moved), 1);
        layOut();
    });
    problemList_ =
        new ProblemList(&frame_, look_, [this]() -> const Problems& { return editor_.problems(); });
    problemList_->onChosen = [this](const Diagnostic& one) { editor_.gotoProblem(one); };
    bottom_->setContent(BottomPanes::Pane::problems, problemList_);
    makeConsole();
}

/// Closed by hand it stays away for the run, but for what the script asks.
void Workbench::makeConsole() {
    const auto show = [this] {
        if (!settings_.bottom) toggle(&EditorSettings::bottom);
        bottom_->show(BottomPanes::Pane::console);
    };
    ConsolePane::Actions actions;
    actions.used = [this, show] {
        if (!consoleClosed_ && !bottom_->isOpen(BottomPanes::Pane::console)) show();
    };
    actions.asked = [this, show] {
        show();
        refresh();
    };
    actions.answered = [this] {
        if (controls_.text) controls_.text->SetFocus();
    };
    actions.breathe = [this] { editor_.breatheNow(); };
    console_ = new ConsolePane(&frame_, look_, std::move(actions));
    bottom_->setContent(BottomPanes::Pane::console, console_);
    bottom_->copyConsole = [this] { console_->copyAll(); };
    bottom_->onClosed = [this](BottomPanes::Pane pane) {
        consoleClosed_ |= pane == BottomPanes::Pane::console;
    };
}

void Workbench::makeOutline() {
    outline_ = new OutlinePane(&frame_, look_);
    outline_->onChosen = [this](const OutlineEntry& entry) {
        if (assist_) assist_->leavingPlace();
        editor_.gotoBytes(entry.nameBegin);
    };
    outline_->onClosed = [this] { toggle(&EditorSettings::outline); };
    const auto drag = [this](int moved) {
        settings_.outlineWidth = std::max(layout_.outline.width - 1 + frame_.ToDIP(moved), 1);
        layOut();
    };
    makeEdgeGrip(*outline_->list(), wxRIGHT, drag);
    makeEdgeGrip(*outline_->heading(), wxRIGHT, drag);
}

/// With nothing to edit yet, unless the user has had enough of it.
void Workbench::makeWelcome() {
    WelcomePane::Actions actions;
    actions.create = [this] { command_(command_id::kNew); };
    actions.open = [this] { command_(command_id::kOpen); };
    actions.examples = [this] {
        editor_.openExample();
        refresh();
    };
    actions.manual = [this] { command_(command_id::kHelp); };
    actions.showAtStart = [this](bool shown) {
        settings_.welcome = shown;
        keepSettings();
    };
    actions.closed = [this] { closeWelcome(); };
    welcomeShown_ = settings_.welcome && editor_.textLength() == 0;
    if (!welcomeShown_) return;
    const bool tour = editor_.documentPath().empty() && std::exchange(settings_.tour, false);
    if (tour) editor_.showTour();
    tourTab_ = editor_.shownTab();
    welcome_ = new WelcomePane(&frame_, look_, settings_.welcome, tour, std::move(actions));
}

void Workbench::closeWelcome() {
    if (!std::exchange(welcomeShown_, false)) return;
    layOut();
    if (controls_.text) controls_.text->SetFocus();
}

void Workbench::openFind(bool withReplace) {
    if (!hasText()) return;
    findShown_ = true;
    foundText_ = editor_.textVersion();
    findBar().open(withReplace);
    refreshToolbar(shown_);
}

void Workbench::closeFind() {
    if (!std::exchange(findShown_, false)) return;
    findBar_->leave();
    layOut();
    controls_.text->SetFocus();
    keepSettings();
}

void Workbench::editBreakpoint(int line) {
    if (!hasText() || settings_.classic) return;
    editor_.gotoScriptLine(line);
    BreakpointWishes wishes;
    editor_.editBreakpoints([&](BreakpointPlan& plan) { wishes = plan.wishesAt(line); });
    breakpointBox().open(line, wishes);
}

bool Workbench::marginMenu(const wxPoint& place) {
    if (settings_.classic || !controls_.text || place.x < 0) return false;
    const int end = controls_.text->GetMarginWidth(kNumberMargin) +
                    controls_.text->GetMarginWidth(kBookmarkMargin);
    if (place.x >= end) return false;
    const int position = controls_.text->PositionFromPoint(wxPoint(end, place.y));
    editBreakpoint(controls_.text->LineFromPosition(position) + 1);
    return true;
}

bool Workbench::takesCommand(int id) {
    if (settings_.classic || !hasText()) return false;
    if (assist_ && assist_->command(id)) return true;
    if (id == command_id::kFind || id == command_id::kReplace) {
        const bool isOpen = findShown_ && id == command_id::kFind && findBar_->field()->HasFocus();
        isOpen ? closeFind() : openFind(id == command_id::kReplace);
        return true;
    }
    if (id != command_id::kFindNext && id != command_id::kFindPrevious) return false;
    findAgain(id == command_id::kFindNext);
    return true;
}

/// With nothing searched for yet there is nothing to repeat: the text is asked for.
void Workbench::findAgain(bool forward) {
    const bool closed = !std::exchange(findShown_, true);
    if (closed) foundText_ = editor_.textVersion();
    const bool nothing = closed ? !findBar().resume() : findBar_->field()->GetValue().empty();
    if (nothing) return openFind(!closed && findBar_->hasReplaceRow());
    findBar_->go(forward);
    if (closed) refreshToolbar(shown_);
}

bool Workbench::escape() {
    if (settings_.classic || !controls_.text) return false;
    if (assist_ && assist_->escape()) return true;
    if (side_ && side_->escape()) return true;
    if (breakpointBox_ && breakpointBox_->IsShown()) return breakpointBox_->close(), true;
    if (findShown_) return closeFind(), true;
    if (controls_.text->HasFocus()) return false;
    controls_.text->SetFocus();
    return true;
}

void Workbench::makeMarks() {
    if (!controls_.text) return;
    marks_ = std::make_unique<CodeMarks>(*controls_.text, look_);
    assist_ = std::make_unique<TextAssist>(frame_, *controls_.text, editor_, look_);
    assist_->onRead = [this](std::uint64_t version, const ScopeIndex& index) {
        showOutline(version, index);
    };
    assist_->onUnread = [this] { showNoOutline(); };
    folds_ = std::make_unique<SyntaxFolds>(editor_.textControl());
    measures_ = std::make_unique<LineMeasures>(*controls_.text, look_);
    editor_.measures().want(settings_.lineCounts, settings_.timeShares);
    pause_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { followText(); });
}

/// The classic layout has the classic colours; in the others the theme is put over them.
void Workbench::applyLook() {
    const wxColour none = wxNullColour;
    shownBlack_ = editor_.blackBackground();
    look_.table = shownBlack_ ? &darkTheme() : &tableOf(settings_.theme);
    const int first = controls_.text ? controls_.text->GetFirstVisibleLine() : 0;
    const bool seen = exceptionIsSeen();
    applyTextLook();
    if (controls_.text) controls_.text->SetFirstVisibleLine(first);
    if (seen) showWholeException();
    const bool classic = settings_.classic;
    native::setDarkFrame(frame_, !classic && look_->dark);
    for (wxStyledTextCtrl* text : {controls_.text, controls_.output})
        if (text)
            native::colourScrollBars(*text, classic ? none : colourOf(look_->secondText),
                                     colourOf(look_->editor));
    frame_.SetBackgroundColour(classic ? none : colourOf(look_->border));
    native::colourMenuBar(frame_, classic ? none : colourOf(look_->chrome),
                          classic ? none : colourOf(look_->text));
    frame_.Refresh();
}

void Workbench::applyTextLook() {
    const bool plain = settings_.classic || settings_.theme == ThemeChoice::classic;
    const std::string face = settings_.fontFace.empty() ? toUtf8(codeFace()) : settings_.fontFace;
    const int points = settings_.fontPoints > 0 ? settings_.fontPoints : CodeFont::kUsualPoints;
    look_.code.SetFaceName(fromUtf8(face));
    look_.code.SetPointSize(points);
    look_.code = native::paintable(look_.code);
    look_.codeStrong = look_.code.Bold();
    editor_.setInspecting(!settings_.classic);
    editor_.setTabs(!settings_.classic);
    editor_.setTheme(plain ? nullptr : look_.table, {face, points});
    if (!settings_.classic) showMeasures();
    if (marks_) marks_->use(!settings_.classic);
    if (assist_) assist_->use(!settings_.classic);
    if (findBar_) findBar_->applyLook();
    if (console_) console_->applyLook();
}

void Workbench::systemColoursChanged() {
    useSystemFonts(look_);
    applyLook();
}

WorkbenchState Workbench::state() const {
    WorkbenchState state;
    state.toolbar = settings_.toolbar;
    state.statusBar = settings_.statusBar;
    state.tabs = severalTexts_;
    state.bottom = settings_.bottom;
    state.right = bottom_ && bottom_->hasRight();
    state.outline = settings_.outline;
    state.side = sideShown_ || welcomeShown_;
    state.welcome = welcomeShown_ && !sideShown_;
    state.findBar = findShown_;
    if (findShown_) state.findRows = findBar_->rows();
    state.stopped =
        shown_.run == EditorStatus::Run::stopped || shown_.run == EditorStatus::Run::exception;
    state.running = shown_.run == EditorStatus::Run::running;
    state.outlineWidth = settings_.outlineWidth;
    state.sideWidth = settings_.sideWidth;
    state.bottomHeight = settings_.bottomHeight;
    return state;
}

wxRect Workbench::pixels(const Rectangle& place) const {
    const wxPoint begin = frame_.FromDIP(wxPoint(place.x, place.y));
    const wxPoint end = frame_.FromDIP(wxPoint(place.x + place.width, place.y + place.height));
    return {begin.x, begin.y, end.x - begin.x, end.y - begin.y};
}

void Workbench::place(wxWindow* window, const Rectangle& place) const {
    if (!window) return;
    window->Show(place.width > 0 && place.height > 0);
    if (window->IsShown()) window->SetSize(pixels(place));
}

/// The layout is given for 96 dots per inch; what the scaling rounds goes to the editor's height
/// and to both widths.
void Workbench::layOutClassic() {
    const wxSize client = frame_.GetClientSize();
    const int output = std::min(frame_.FromDIP(kOutputTextHeight), client.y);
    if (controls_.text) controls_.text->SetSize(0, 0, client.x, client.y - output);
    if (controls_.output) {
        controls_.output->Show();
        controls_.output->SetSize(0, client.y - output, client.x, output);
    }
    if (controls_.rule) controls_.rule->SetSize(0, 0, client.x, frame_.FromDIP(1));
}

void Workbench::layOut() {
    if (!begun_) return;
    if (controls_.rule) controls_.rule->Show(settings_.classic);
    if (settings_.classic) {
        if (!parted_) return layOutClassic();
        for (wxWindow* part : std::initializer_list<wxWindow*>{
                 toolbar_, statusLine_, tabs_, side_, outline_, findBar_, welcome_, breakpointBox_})
            if (part) part->Hide();
        bottom_->layOut({}, false, [](const Rectangle&) { return wxRect(); });
        return layOutClassic();
    }
    wxWindow* const focus = wxWindow::FindFocus();
    const bool exceptionSeen = exceptionIsSeen();
    const wxSize size = frame_.ToDIP(frame_.GetClientSize());
    layout_ = layOutWorkbench(state(), size.x, size.y);
    if (findShown_ && findBar_->setWidth(pixels(layout_.findBar).width))
        layout_ = layOutWorkbench(state(), size.x, size.y);
    refreshToolbar(shown_);
    place(toolbar_, layout_.toolbar);
    place(statusLine_, layout_.statusBar);
    place(tabs_, layout_.tabs);
    place(controls_.text, layout_.editor);
    place(outline_, layout_.outline);
    if (sideShown_) side().setAsTabs(layout_.sideAsTabs);
    place(side_, sideShown_ ? layout_.side : Rectangle());
    place(welcome_, sideShown_ ? Rectangle() : layout_.side);
    place(findBar_, layout_.findBar);
    bottom_->layOut(layout_, layout_.outputHeading.height > 0,
                    [this](const Rectangle& rectangle) { return pixels(rectangle); });
    if (breakpointBox_) breakpointBox_->place();
    if (exceptionSeen) showWholeException();
    keepFocusSeen(focus);
}

/// Keys for a window that is hidden go nowhere, and the toolkit complains of each.
void Workbench::keepFocusSeen(wxWindow* focus) {
    if (focus && !focus->IsShownOnScreen() && controls_.text && frame_.IsDescendant(focus))
        controls_.text->SetFocus();
}

bool Workbench::command(int id) {
    if (viewCommand(id)) return true;
    const int pane = id - command_id::kFirstPane;
    if (pane >= 0 && pane < command_id::kPanes) return focusPane(pane), true;
    switch (id) {
        case command_id::kNextPane:
        case command_id::kPreviousPane:
            return moveFocus(id == command_id::kNextPane ? 1 : -1), true;
        case command_id::kEditBreakpoint:
            return editBreakpoint(editor_.status().line), true;
        case command_id::kNextProblem:
        case command_id::kPreviousProblem:
            return goToProblem(id == command_id::kNextProblem), true;
        default:
            return false;
    }
}

void Workbench::goToProblem(bool next) {
    wantedProblem_.reset();
    if (settings_.classic) return next ? editor_.nextProblem() : editor_.previousProblem();
    if (editor_.problems().empty()) return awaitProblem(next);
    bottom_->open(BottomPanes::Pane::problems, true);
    next ? editor_.nextProblem() : editor_.previousProblem();
}

/// The key may come before the first answer about the text.
void Workbench::awaitProblem(bool next) {
    if (liveCheck_ && liveCheck_->isCurrent()) return;
    wantedProblem_ = {next, editor_.textVersion(), editor_.caretPosition()};
    checkText();
}

void Workbench::goToAwaitedProblem() {
    const auto wanted = std::exchange(wantedProblem_, std::nullopt);
    if (!wanted || !liveCheck_->isCurrent() || editor_.problems().empty()) return;
    if (wanted->text == editor_.textVersion() && wanted->caret == editor_.caretPosition())
        goToProblem(wanted->next);
}

/// The pane opens if it is not in view.
void Workbench::focusPane(int number) {
    enum { text, output, console, problems, variables, stack, outline };
    wxWindow* wanted = controls_.text;
    if (number == output) wanted = controls_.output;
    if (settings_.classic) {
        if (wanted && number <= output) wanted->SetFocus();
        return;
    }
    if (number >= output && number <= problems && !settings_.bottom)
        toggle(&EditorSettings::bottom);
    if (number == output) bottom_->show(BottomPanes::Pane::output);
    if (number == console) {
        bottom_->show(BottomPanes::Pane::console);
        wanted = console_;
    }
    if (number == problems) {
        bottom_->show(BottomPanes::Pane::problems);
        wanted = problemList_;
    } else if (number == variables || number == stack) {
        const int section = number == variables ? DebugPanel::kVariables : DebugPanel::kStack;
        if (!sideShown_) showSide(true);
        side().showSection(section);
        wanted = side().list(section);
    } else if (number == outline) {
        if (!settings_.outline) toggle(&EditorSettings::outline);
        wanted = outline_->list();
    }
    // Where there is no room for a pane it is left out.
    if (wanted && !wanted->IsShownOnScreen()) wanted = controls_.text;
    if (wanted) wanted->SetFocus();
}

void Workbench::showSide(bool shown) {
    if (settings_.classic || sideShown_ == shown) return;
    sideShown_ = shown;
    showChecks();
    layOut();
}

std::vector<wxWindow*> Workbench::focusOrder() const {
    std::vector<wxWindow*> order;
    if (!settings_.classic && toolbar_->IsShown()) order.push_back(toolbar_->tabStop());
    if (!settings_.classic && severalTexts_ && tabs_->IsShown()) order.push_back(tabs_);
    if (!settings_.classic && findShown_) order.push_back(findBar_->field());
    order.push_back(controls_.text);
    if (settings_.classic) {
        order.push_back(controls_.output);
    } else {
        if (outline_->IsShown()) order.push_back(outline_->list());
        for (wxWindow* pane : bottom_->focusOrder()) order.push_back(pane);
        if (side_ && side_->IsShown())
            for (wxWindow* pane : side_->focusOrder()) order.push_back(pane);
    }
    std::erase(order, nullptr);
    return order;
}

/// From what has the keyboard now, or from what it stands in.
bool Workbench::moveFocus(int step) {
    const std::vector<wxWindow*> order = focusOrder();
    if (order.empty()) return false;
    const auto count = static_cast<int>(order.size());
    int at = -1;
    for (const wxWindow* window = wxWindow::FindFocus(); window && at < 0;
         window = window->GetParent())
        for (int i = 0; i < count; ++i)
            if (order[static_cast<std::size_t>(i)] == window) at = i;
    // A window that comes to the front has no keyboard for a moment: then it is the text's.
    for (int i = 0; i < count && at < 0; ++i)
        if (order[static_cast<std::size_t>(i)] == controls_.text) at = i;
    const int next = (std::max(at, 0) + step + count) % count;
    order[static_cast<std::size_t>(next)]->SetFocus();
    return true;
}

/// In the text it is a letter, in the find bar and over the text it goes from field to field.
bool Workbench::tab(bool back) {
    const wxWindow* const focus = wxWindow::FindFocus();
    const bool isField = findBar_ && focus == findBar_->field();
    if (settings_.classic || !focus || focus == controls_.text || isField) return false;
    const wxWindow* const pane = focus == console_->madeCanvas() ? console_ : focus;
    const std::vector<wxWindow*> order = focusOrder();
    const bool isPane = std::find(order.begin(), order.end(), pane) != order.end();
    if (!isPane || (pane == console_ && console_->inUse())) return false;
    return moveFocus(back ? -1 : 1);
}

void Workbench::keepSettings() {
    EditorSettings kept = settings_;
    kept.classic = keepClassic_;
    if (side_) kept.foldedSections = side_->folded();
    if (!settings_.classic) kept.zoom = editor_.status().zoom == 100 ? 0 : editor_.zoom();
    kept.maximised = frame_.IsMaximized();
    if (!kept.maximised && !settings_.classic) {
        const wxRect place = frame_.GetRect();
        kept.left = place.x;
        kept.top = place.y;
        kept.width = place.width;
        kept.height = place.height;
    }
    saveEditorSettings(kept);
}

}  // namespace korvant::ui
