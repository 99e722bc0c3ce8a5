// The parts around the text in the editor's window: toolbar, panes, status bar. Which of them stand
// where, and what they show of the editor's state.
#pragma once

#include <wx/timer.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "editor/control/fold_levels.h"
#include "editor/control/workbench_layout.h"
#include "editor/script_editor.h"
#include "ui/editor/editor_native.h"
#include "ui/editor/editor_settings.h"
#include "ui/editor/panels/debug_panel.h"
#include "ui/editor/panels/main_toolbar.h"
#include "ui/editor/panels/status_line.h"
#include "ui/kit/pane_heading.h"
#include "ui/kit/row_list.h"
#include "ui/kit/ui_native.h"

class wxFrame;
class wxStyledTextCtrl;

namespace korvant::ui {

class BottomPanes;
class BreakpointBox;
class CodeMarks;
class ConsolePane;
class ExceptionBox;
class FileTabs;
class FindBar;
class LineMeasures;
class LiveCheck;
class OutlinePane;
class ProblemList;
class TextAssist;
class WelcomePane;

/// The two controls of an editor. Either may be missing.
struct EditorControls {
    wxStyledTextCtrl* text = nullptr;
    wxStyledTextCtrl* output = nullptr;
    wxWindow* rule = nullptr;  ///< the line between them in the classic layout
};

class Workbench {
  public:
    /// The parts are children of `frame`, which outlives this. `command` carries out a command of
    /// the editor.
    Workbench(wxFrame& frame, ScriptEditor& editor, EditorControls controls,
              std::function<void(int)> command);
    ~Workbench();
    Workbench(const Workbench&) = delete;
    Workbench& operator=(const Workbench&) = delete;

    /// The window has its controls and its first text.
    void begin();
    void layOut();
    /// Shows the state that the editor is in now.
    void refresh();
    /// Another text is about to be in view, or is.
    void textLeaves();
    void textShown();
    /// Something has moved in the text's window.
    void textMoved();
    /// What the text's control tells.
    void textNotified(const ControlNotification& notification);
    /// A key that is for what stands over the text; false for any other.
    bool takesKey(const KeyPress& key);
    /// A message to the text's control; true when it has been dealt with.
    bool takesMessage(unsigned message, std::uintptr_t w, std::intptr_t l);
    /// The desktop's colours have changed.
    void systemColoursChanged();
    /// A command that is the window's own; false for any other.
    bool command(int id);
    /// A command of the editor that the window does in its own way; false for any other.
    bool takesCommand(int id);
    /// What can be used while a script runs; nothing in the classic layout.
    native::UsableParts usableWhileBusy() const;
    /// A key that the console keeps for the script, or for the user's typing ahead.
    bool keyIsForConsole(const wxKeyEvent& event, const EditorCommand* command) const;
    /// Escape outside of lists and fields; false when nothing was open.
    bool escape();
    void openFind(bool withReplace);
    void findAgain(bool forward);
    void closeFind();
    /// The box of a breakpoint's wishes, for the 1-based `line`.
    void editBreakpoint(int line);
    /// What the right button brings beside the text; false for a place that is not there.
    bool marginMenu(const wxPoint& place);
    /// The menu items of the window's commands, told through this.
    std::function<void(int id, bool checked)> showChecked;

    bool classic() const { return settings_.classic; }
    const Look& look() const { return look_; }
    const EditorSettings& settings() const { return settings_; }
    /// What Tab and Ctrl+F6 go through, in order; only what can be seen.
    std::vector<wxWindow*> focusOrder() const;
    bool moveFocus(int step);
    /// Tab, where that goes from pane to pane; false where it is somebody else's.
    bool tab(bool back);
    void keepSettings();

  private:
    void makeParts();
    void makeBottom();
    void makeConsole();
    void followConsole(const EditorStatus& status);
    void makeOutline();
    void makeTabs();
    void followTabs();
    void makeMarks();
    /// Each is made when it is first wanted: most windows come and go without it.
    DebugPanel& side();
    DebugPanelActions sideActions();
    FindBar& findBar();
    BreakpointBox& breakpointBox();
    ExceptionBox& exceptionBox();
    /// There is a text, with parts around it.
    bool hasText() const { return parted_ && controls_.text; }
    void applyTextLook();
    void makeWelcome();
    void closeWelcome();
    bool viewCommand(int id);
    void focusPane(int number);
    void goToProblem(bool next);
    void awaitProblem(bool next);
    void goToAwaitedProblem();
    void showSide(bool shown);
    void followRun(const EditorStatus& status);
    void followStop(const EditorStatus& status);
    void followText();
    void showOutline(std::uint64_t version, const ScopeIndex& index);
    void showNoOutline();
    bool textIsLong() const;
    wxString noteOnText() const;
    void followFound();
    void checkText();
    void followWord();
    bool offersNames() const;
    void followProblems();
    void followBreakpoints();
    void showStop(const EditorStatus& status);
    void showStopLine();
    bool exceptionIsSeen() const;
    void showWholeException();
    void explainException();
    void copyException();
    wxString functionAtStop() const;
    void applyLook();
    void toggleClassic();
    void chooseTheme(ThemeChoice choice);
    void resetLayout();
    void keepFocusSeen(wxWindow* focus);
    void toggle(bool EditorSettings::*part);
    void showChecks();
    void chooseFont();
    void showLastOutput();
    void measure(bool EditorSettings::*what);
    void showMeasures();
    WorkbenchState state() const;
    void layOutClassic();
    void place(wxWindow* window, const Rectangle& place) const;
    wxRect pixels(const Rectangle& place) const;
    bool isEnabled(int command) const;
    void toolPressed(int command);
    void refreshToolbar(const EditorStatus& status);
    void refreshStatus(const EditorStatus& status);
    StatusLine::Content statusContent(const EditorStatus& status) const;

    wxFrame& frame_;
    ScriptEditor& editor_;
    EditorControls controls_;
    std::function<void(int)> command_;
    EditorSettings settings_;
    bool keepClassic_ = false;  ///< the host's wish is not remembered as the user's
    Look look_;
    WorkbenchLayout layout_;
    MainToolbar* toolbar_ = nullptr;
    StatusLine* statusLine_ = nullptr;
    FileTabs* tabs_ = nullptr;
    bool severalTexts_ = false;
    std::unique_ptr<BottomPanes> bottom_;
    std::unique_ptr<CodeMarks> marks_;
    std::unique_ptr<TextAssist> assist_;
    std::unique_ptr<SyntaxFolds> folds_;
    std::unique_ptr<LineMeasures> measures_;
    DebugPanel* side_ = nullptr;
    OutlinePane* outline_ = nullptr;
    ProblemList* problemList_ = nullptr;
    ConsolePane* console_ = nullptr;
    bool consoleClosed_ = false;  ///< by hand, in this run
    ExceptionBox* exceptionBox_ = nullptr;
    BreakpointBox* breakpointBox_ = nullptr;
    FindBar* findBar_ = nullptr;
    WelcomePane* welcome_ = nullptr;
    bool findShown_ = false;
    bool welcomeShown_ = false;
    std::uint64_t tourTab_ = 0;
    std::uint64_t foundText_ = 0;  ///< the version of the text whose matches are marked
    std::unique_ptr<native::DarkWatch> darkWatch_;
    wxTimer pause_;  ///< in the user's typing
    std::unique_ptr<LiveCheck> liveCheck_;
    struct WantedProblem {
        bool next;
        std::uint64_t text;
        std::size_t caret;
    };
    std::optional<WantedProblem> wantedProblem_;  ///< of a text that is not yet checked
    std::uint32_t runLimit_ = 0;  ///< of the run that is under way, or was last; milliseconds
    wxString runNote_;            ///< why a button does nothing, while a script runs
    wxString checkNote_;          ///< why nothing is checked; until the next change of the text
    bool sideShown_ = false;
    bool sideByStop_ = false;    ///< the panel goes when the run is over
    bool closedByHand_ = false;  ///< the panel stays away in this run
    std::uint64_t shownText_ = ~std::uint64_t{0};
    std::uint64_t timedText_ = ~std::uint64_t{0};  ///< for which the pause was begun
    std::uint64_t shownProblems_ = ~std::uint64_t{0};
    std::uint64_t shownBuild_ = 0;
    std::uint64_t shownRun_ = 0;
    std::uint64_t shownStop_ = ~std::uint64_t{0};
    int exceptionLine_ = 0;
    bool shownBlack_ = false;    ///< what surrounds the text goes with its black background
    int callerLine_ = 0;         ///< where the caret was put last
    bool checksItself_ = false;  ///< the text, whenever the user pauses
    bool checkedClean_ = false;  ///< the text that a check has found nothing in
    bool shownEdited_ = false;   ///< the stop is marked as one of another text
    std::vector<BreakpointRow> breakpointRows_;
    EditorStatus::Run marksRun_ = EditorStatus::Run::idle;  ///< for which the marks were made
    EditorStatus shown_;
    bool shownWaiting_ = false;  ///< the script waits for what is typed
    bool begun_ = false;
    bool parted_ = false;  ///< the parts have been made
};

}  // namespace korvant::ui
