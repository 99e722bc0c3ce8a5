// The script editor without its window.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "editor/assist/assistant.h"
#include "editor/assist/line_editing.h"
#include "editor/assist/outline.h"
#include "editor/control/editor_window.h"
#include "editor/control/output_pane.h"
#include "editor/control/search.h"
#include "editor/control/search_dialogs.h"
#include "editor/control/text_control.h"
#include "editor/control/view_options.h"
#include "editor/document/backup_store.h"
#include "editor/document/file_memory.h"
#include "editor/document/recent_files.h"
#include "editor/editor_commands.h"
#include "editor/editor_status.h"
#include "editor/open_documents.h"
#include "editor/stops/attention_clock.h"
#include "editor/stops/debugger.h"
#include "editor/stops/inspection.h"
#include "editor/stops/last_output.h"
#include "editor/stops/run_measures.h"
#include "host/run/script_session.h"

namespace korvant {

/// What surrounds an editor. Nothing is owned; everything must outlive it.
struct EditorSurroundings {
    ScriptSession& session;
    EditorWindow& window;
    FileOperations& files;
    /// For backups, recovery copies and the list of recent files; empty keeps none of them.
    std::string dataFolder;
    /// The folder of the host's program, beside which the manual is.
    std::string programFolder;
    /// The run-time library's functions, for the help in call tips; may be empty.
    std::span<const FunctionFamily> families = {};
};

/// One opening of the editor. Order of calls: constructor, setHost, setHostText, initialise,
/// shown, then commands, keys and notifications in any order, closeBox or the command Exit, closed,
/// hostText. Everything is called on the window's thread. No function throws.
class ScriptEditor {
  public:
    explicit ScriptEditor(const EditorSurroundings& surroundings);
    ~ScriptEditor();
    ScriptEditor(const ScriptEditor&) = delete;
    ScriptEditor& operator=(const ScriptEditor&) = delete;

    void setHost(asIScriptEngine* engine, asIScriptContext* context);
    void setHostText(std::string bytes) { hostText_ = std::move(bytes); }
    /// Kept and not used.
    void setHostTitle(std::string title) { hostTitle_ = std::move(title); }
    /// The host's text is this file's content. Changes are then kept in files only: leaving the
    /// editor writes them or asks.
    void setHostFile(std::string path) { hostFile_ = std::move(path); }
    /// What the host gets back: the edited text after the close box, otherwise what it gave.
    const std::string& hostText() const noexcept { return hostText_; }

    /// Where there is no text yet: a script to look at, which the host does not get unless it is
    /// changed.
    void showTour();
    /// Of the text that is the host's; empty while that is the host's own.
    const std::string& documentPath() const;

    /// Creates and sets up the controls and puts the host's text into the editor. The window's
    /// menu exists by then.
    void initialise();
    /// The window is visible: unsaved text of an earlier opening is offered.
    void shown();

    /// A script is suspended and waits for the user.
    bool debugging() const noexcept { return debugger_.debugging(); }

    /// A command of the menu, by its number; nothing where it is not enabled.
    void command(int id);
    /// While a script runs only Stop and Pause do something, and while a run is held what it does
    /// not depend on.
    bool enabled(const EditorCommand& command) const;
    /// A key was pressed in the window; `inText`: while the text had the keyboard. True: it means a
    /// command, which has been performed if it could be, and nobody else is to see the key.
    bool key(const KeyPress& key, bool inText);
    void functionKey(int number) { key(functionKeyPress(number), false); }
    void editorNotified(const ControlNotification& notification);
    void outputNotified(const ControlNotification& notification);
    /// The window has changed the font or the colours of the controls.
    void looksChanged() { view_.fontChanged(); }
    /// The process or the session is about to end: what is not saved is kept at once.
    void endingSoon();
    /// To be called about once a second.
    void tick();
    /// The close box or its key. True: the host's text is taken, the window may go. False: the user
    /// stays, or a script is being driven; it is asked to stop, and this is done once more
    /// afterwards, followed by endModal().
    bool closeBox();
    /// The window is to close as soon as no script is driven any more.
    bool closing() const noexcept { return closeWanted_ || left_; }
    /// The controls are gone. Everything does nothing from here on.
    void closed();

    // For what stands around the text.
    EditorStatus status() const;
    bool outputEmpty() const { return outputControl_.length() == 0; }
    void clearOutput() { output_.clear(); }
    int zoom() const { return static_cast<int>(editor_.send(sci::kGetZoom)); }
    void setZoom(int zoom) { editor_.send(sci::kSetZoom, static_cast<std::uintptr_t>(zoom)); }
    bool blackBackground() const noexcept { return view_.black(); }
    /// See ViewOptions::useTheme.
    void setTheme(const ThemeTable* theme, const CodeFont& font);
    /// Another number after each change of the text.
    std::uint64_t textVersion() const noexcept { return current().version; }
    /// The text is not the one that runs, or stands still, any more.
    bool changedSinceRun() const;
    /// The last run took the time that it was allowed, and the text is still the one that ran.
    bool runTimedOut() const;
    /// The last build was asked for alone, and not for a run.
    bool onlyChecked() const noexcept { return onlyChecked_; }
    /// The names that the script declares have settled: they are coloured, and listed.
    std::vector<OutlineEntry> useIndex(const ScopeIndex& index);
    int textLength() const { return editor_.length(); }
    std::size_t caretPosition() const { return static_cast<std::size_t>(editor_.caret()); }
    void gotoBytes(std::size_t position);
    void gotoScriptLine(std::int32_t line);

    // Several texts in one window, where that has tabs for them.
    /// Off: New and Open put another text into the place of the one in view, as they always did. A
    /// host's own text has the editor for itself.
    void setTabs(bool tabs) { tabs_ = tabs && (!hostFile_.empty() || hostText_.empty()); }
    std::vector<DocumentTab> tabs() const { return documents_.tabs(); }
    std::uint64_t shownTab() const noexcept { return current().id; }
    /// Not while a script runs.
    void showTab(std::uint64_t id);
    /// Puts it before the one that is at `index` now, at the end for the number of tabs.
    void moveTab(std::uint64_t id, std::size_t index) { documents_.move(id, index); }
    /// Asks about changes. Not while a script is driven.
    void closeTab(std::uint64_t id);
    /// 1-based; 0 for a place in another text than the one in view.
    std::int32_t lineInView(const ScriptPlace& place) const;
    /// The text in view is the one that was built last.
    bool runIsShown() const { return current().id == runDocument_; }
    /// The name of a place's file, UTF-8; empty where the text is in none.
    std::string fileOf(const ScriptPlace& place) const;
    /// Shows the text of a frame of the stack, if it can be had.
    void showFrame(unsigned frame);

    // Around a script that stands still, where the window wants it.
    /// Only while nothing runs. Without it everything is as it always was.
    void setInspecting(bool inspecting);
    /// What was remembered of the file that is open, once the window looks into runs.
    void recallFile();
    Inspection& inspection() noexcept { return inspection_; }
    RunMeasures& measures() noexcept { return measures_; }
    /// UTF-8.
    std::string lastOutput() const;
    /// What the line of an exception stop tells of it, one sentence; empty where it tells nothing.
    std::string explainException();
    /// A moment for the window while a script is driven.
    void breatheNow() {
        if (debugger_.busy() && !inspection_.held()) inspection_.onAttention();
    }
    std::vector<PlannedBreakpoint> plannedBreakpoints();
    void changeBreakpoint(std::int32_t line, const BreakpointWishes& wishes);
    void editBreakpoints(const std::function<void(BreakpointPlan&)>& action);
    const Problems& problems() const noexcept { return current().problems; }
    void gotoProblem(const Diagnostic& problem);
    /// What the compiler would get; nothing where it cannot be had.
    std::optional<std::string> scriptBytes();
    /// Found in the text as it is.
    void setProblems(std::vector<Diagnostic> found);
    asIScriptEngine* engine() const noexcept { return engine_; }
    /// What is offered while one writes comes from the window; the lists and tips of the control
    /// stay away.
    void setAssistedByWindow(bool assisted) { assistedByWindow_ = assisted; }
    const TextControl& textControl() const noexcept { return editor_; }
    /// The problem that the caret is at, else the first on its line; null for none.
    const Diagnostic* problemAtCaret() const;
    /// Opens the manual at a function of the library; at its beginning for any other name.
    void helpAt(const std::string& function);
    /// Opens it at what it says of the exception that the script stands at.
    void helpOnException();

    // The commands' handlers; see editor_commands.cpp.
    void newDocument();
    void openDocument();
    /// Asks for one of the scripts that come with the program; without them the manual opens.
    void openExample();
    std::string examplesFolder() const;
    void save();
    void saveAs();
    void exit();
    void closeDocument() { closeTab(current().id); }
    void nextTab() { showTab(documents_.neighbour(1).id); }
    void previousTab() { showTab(documents_.neighbour(-1).id); }
    void openFind();
    void openReplace();
    void findNext() { repeatSearch(true); }
    void findPrevious() { repeatSearch(false); }
    void gotoLine();
    void moveLinesUp() { editor_.send(sci::kMoveSelectedLinesUp); }
    void moveLinesDown() { editor_.send(sci::kMoveSelectedLinesDown); }
    void commentLines() { korvant::commentLines(editor_); }
    void crypt();
    void toggleLineNumbers() { view_.toggleLineNumbers(); }
    void toggleBookmarks() { view_.toggleBookmarks(); }
    void toggleFolding() { view_.toggleFolding(); }
    void toggleBackground() { view_.toggleBackground(); }
    void toggleBreakpoint();
    void removeBreakpoint();
    void addCondition() { debugger_.addCondition(breakpoints(), editor_.caretLine()); }
    void nextBreakpoint() { breakpoints().gotoNext(); }
    void previousBreakpoint() { breakpoints().gotoPrevious(); }
    void deleteBreakpoints();
    void displayVariable();
    void execute() { drive(&Debugger::execute); }
    void build();
    void stepOver() { drive(&Debugger::stepOver); }
    void stepInto() { drive(&Debugger::stepInto); }
    void stopDebugging();
    void stepOut();
    void stepNext();
    void runToCaret();
    void pauseRun();
    void restartRun();
    void watchWord();
    void switchBreakpoint();
    void nextProblem();
    void previousProblem();
    void help() { helpAt({}); }
    void about() { window_.showAbout(); }
    void undo() { editor_.send(sci::kUndo); }
    void redo() { editor_.send(sci::kRedo); }
    void cut() { editor_.send(sci::kCut); }
    void copy() { editor_.send(sci::kCopy); }
    void paste() { editor_.send(sci::kPaste); }
    void selectAll() { editor_.send(sci::kSelectAll); }
    void complete() { assistant_.complete(); }
    void zoomIn() { editor_.send(sci::kZoomIn); }
    void zoomOut() { editor_.send(sci::kZoomOut); }
    void zoomReset() { editor_.send(sci::kSetZoom, 0); }
    void toggleRecoveryCopies();

  private:
    /// While one lives, changes of the text move no breakpoints.
    class OwnText {
      public:
        explicit OwnText(ScriptEditor& editor) : editor_(editor) { editor_.followLines_ = false; }
        ~OwnText() { editor_.followLines_ = true; }
        OwnText(const OwnText&) = delete;
        OwnText& operator=(const OwnText&) = delete;

      private:
        ScriptEditor& editor_;
    };

    OpenDocument& current() noexcept { return documents_.shown(); }
    const OpenDocument& current() const noexcept { return documents_.shown(); }
    EditorDocument& document() noexcept { return current().document; }
    const EditorDocument& document() const noexcept { return current().document; }
    Breakpoints& breakpoints() noexcept { return current().breakpoints; }
    BreakpointPlan& plan() noexcept { return current().plan; }
    RecoveryKeeper& recovery() noexcept { return current().recovery; }

    void run(const std::function<void()>& action);
    void drive(void (Debugger::*action)());
    void guarded(const std::function<void()>& action);
    void waitWhileHeld(const std::function<bool()>& goesOn);
    void notify(const ControlNotification& notification);
    void setUpControls();
    void openRecent(int index);
    void openPath(const std::string& path);
    std::optional<std::string> askPath(bool saving);
    void noteRecent(const std::string& path);
    void rememberFile();
    void recallView(const RememberedFile& file);
    void saveTo(const std::string& path);
    void emptyEditor();
    void refreshTitle();
    void noteSavePoint();
    bool putScrambled(const std::string& text);
    void textModified(const ControlNotification& notification);
    void highlightBraces();
    bool servesWhileBusy(const EditorCommand& command) const;
    bool commandWhileBusy(int id);
    void endBusyRun();
    void resume(const std::function<void()>& goOn);
    void planBreakpoints();
    void planOtherSources();
    void runEnded();
    void markStopHere(std::int32_t line);
    void takeMarkAway();
    std::optional<std::string> sourceInView(const CodeLines& code) const;
    std::optional<Debugger::Elsewhere> stopElsewhere(ScriptLine line) const;
    void toggleBreakpointAt(std::int32_t line);
    bool hasWords(ControlLine line) const;
    std::uint32_t millisecondsUsed() const;
    std::unique_ptr<AttentionClock> breathe();
    void noteBuild();
    void noteRunText();
    const ColouredNames& libraryNames();
    void repeatSearch(bool forward);
    void openManual(const std::string& place, const std::string& heading);
    void marginClicked(const ControlNotification& notification);
    void gotoPlace(const ReportedPlace& place);
    bool takeTextForHost();
    void leave(bool delivers = true);
    bool mayLeave(bool asks);
    bool isHostsOwn(const OpenDocument& one) const;
    Answer askAboutChanges();
    bool saveWhole();
    void giveUp();
    void endRun();
    void showRun();
    ScriptPlace stopPlace() const;
    ScriptPlace placeAtCaret() const;
    void noteStop(EditorStatus& status) const;
    bool showStop();
    bool showSource(const std::string& source);
    std::string sourceNamed(const std::string& line) const;
    void show(OpenDocument& wanted);
    void leaveText();
    void textExchanged();
    void newTab();
    void openTab(const std::string& path);
    bool isUntouched() const;
    void replace(OpenDocument& before);
    void close(OpenDocument& closed);
    void useWatches();
    void setWatches(std::vector<std::string> watches);
    std::vector<std::string> watchesNow() const;
    OpenDocument& placeFor(const RecoveryRecord& record);

    EditorWindow& window_;
    FileOperations& files_;
    ScriptSession& session_;
    asIScriptEngine* engine_ = nullptr;
    std::string programFolder_;
    std::string hostText_;
    std::string hostTitle_;
    std::string hostFile_;  ///< empty: the text is the host's own
    TextControl editor_;
    TextControl outputControl_;
    OutputPane output_;
    BackupStore backups_;
    OpenDocuments documents_;
    Inspection inspection_;
    Debugger debugger_;
    RunMeasures measures_{inspection_.session()};
    LastOutput lastOutput_;
    ViewOptions view_;
    std::shared_ptr<Search> search_;
    Assistant assistant_;
    RecentFiles recentFiles_;
    FileMemory memory_;
    std::uint64_t runBegan_ = 0;        ///< by the clock, while a script is driven
    std::uint64_t runDocument_ = 0;     ///< the text that was last built; 0: none
    std::uint64_t markedDocument_ = 0;  ///< another one with the mark of where it stands still
    std::uint64_t runText_ = 0;         ///< its version then
    std::uint64_t runHash_ = 0;         ///< and its content
    std::size_t runLength_ = 0;
    /// A later version of it, and whether that is another text: undo may have brought it back.
    mutable std::uint64_t comparedText_ = 0;
    mutable bool comparedOther_ = false;
    std::uint64_t hostDocument_ = 0;    ///< the text that the host gets
    std::uint64_t outputDocument_ = 0;  ///< the text whose lines the output pane names
    std::uint64_t watchDocument_ = 0;   ///< the text whose expressions are watched
    bool tabs_ = false;
    bool onlyChecked_ = false;
    bool restartWanted_ = false;  ///< as soon as the held run has ended
    bool starFollowsUndo_ = false;
    bool followLines_ = true;  ///< off while the editor itself puts a text in
    std::span<const FunctionFamily> families_;
    ColouredNames libraryNames_;  ///< of the engine; empty: not read yet
    bool assistedByWindow_ = false;
    bool closeWanted_ = false;  ///< as soon as no script is driven any more
    bool exitWanted_ = false;   ///< likewise
    bool left_ = false;
};

}  // namespace korvant
