#include "editor/script_editor.h"

#include <utility>

#include "base/system/file_io.h"
#include "base/system/user_folders.h"
#include "base/text/text_encoding.h"
#include "editor/assist/manual_place.h"
#include "editor/assist/tour_script.h"
#include "editor/control/control_setup.h"

namespace korvant {

namespace {

constexpr char kNoEditor[] = "Unable to create editor window";
constexpr char kNoOutput[] = "Unable to create output window";
constexpr char kNoManual[] =
    "Documentation files not found.\n\nThe manual is the folder \"scripting_manual\" that comes "
    "with "
    "the program. It is looked for beside the program and beside this module.";
constexpr char kNoBrowserFor[] =
    "No program could be started that shows the manual. To read it, open this file in a web "
    "browser:\n";
constexpr char kUnderHeading[] = "\n\nIt is told there under the heading ";
constexpr std::size_t kLargestPage = std::size_t{16} << 20;  // bytes
constexpr char kNoBrowser[] =
    "Documentation files not found.\n\nNo program could be started that shows the manual. To read "
    "it, "
    "open this file in a web browser:\n";

}  // namespace

ScriptEditor::ScriptEditor(const EditorSurroundings& surroundings)
    : window_(surroundings.window),
      files_(surroundings.files),
      session_(surroundings.session),
      programFolder_(surroundings.programFolder),
      output_(outputControl_),
      backups_(files_, joinPathIn(surroundings.dataFolder, "backups")),
      documents_({editor_, output_, window_, files_, backups_, *session_.services().clock,
                  joinPathIn(surroundings.dataFolder, "recovery")}),
      inspection_(session_, [this](const std::function<bool()>& goesOn) { waitWhileHeld(goesOn); }),
      debugger_({session_, inspection_.session(), window_, editor_, output_,
                 documents_.shown().breakpoints},
                [this] { return document().scriptBytes(); }),
      view_(editor_, outputControl_, window_),
      search_(std::make_shared<Search>(editor_, window_)),
      assistant_(editor_, debugger_, surroundings.families),
      recentFiles_(files_, joinPathIn(surroundings.dataFolder, "recent_files")),
      memory_(files_, joinPathIn(surroundings.dataFolder, "remembered_files")),
      families_(surroundings.families) {
    inspection_.onPrinted = [this](const std::string& text) {
        output_.note(text.substr(0, text.find_last_not_of('\n') + 1));
    };
    inspection_.lineInText = [this](std::int32_t line) { return debugger_.lineInText(line); };
    hostDocument_ = watchDocument_ = documents_.shown().id;
    inspection_.onScriptBuilt = [this] { planOtherSources(); };
    debugger_.showsElsewhere = [this] { return showStop(); };
    debugger_.elsewhere = [this](ScriptLine line) { return stopElsewhere(line); };
    inspection_.onBreath = [this] {
        if (window_.pumpEvents()) session_.requestStop();
    };
}

ScriptEditor::~ScriptEditor() = default;

/// What the user looks at takes no time of the run's.
void ScriptEditor::waitWhileHeld(const std::function<bool()>& goesOn) {
    const std::uint64_t began = session_.services().clock->monotonic();
    showStop();
    window_.waitWhileHeld(goesOn);
    showRun();
    inspection_.session().setHostLines(debugger_.linesBehindHold());
    planBreakpoints();
    runBegan_ += session_.services().clock->monotonic() - began;
}

void ScriptEditor::setHost(asIScriptEngine* engine, asIScriptContext* context) {
    engine_ = engine;
    libraryNames_ = {};
    debugger_.setHost(engine, context);
    assistant_.setEngine(engine);
}

void ScriptEditor::initialise() {
    guarded([this] {
        setUpControls();
        {
            const OwnText own(*this);
            document().begin(hostText_, hostFile_);
        }
        view_.fontChanged();
        recovery().begin();
        window_.setRecentFiles(recentFiles_.paths());
        refreshTitle();
    });
}

void ScriptEditor::setUpControls() {
    editor_ = TextControl(window_.createControl(ControlKind::editor));
    if (editor_.exists())
        setUpEditorControl(editor_);
    else
        window_.errorBox(kNoEditor);
    outputControl_ = TextControl(window_.createControl(ControlKind::output));
    if (outputControl_.exists())
        setUpOutputControl(outputControl_);
    else
        window_.errorBox(kNoOutput);
    view_.setUp();
    setUpConveniences(editor_);
    wrapOutput(outputControl_);
    debugger_.setUp();
}

void ScriptEditor::showTour() {
    if (editor_.length() > 0 || !document().path().empty()) return;
    guarded([this] {
        const OwnText own(*this);
        document().begin(kTourScript, {});
        current().tour = current().version;
        refreshTitle();
    });
}

void ScriptEditor::shown() {
    const OwnText own(*this);
    run([this] {
        if (!tabs_) {
            if (recovery().offer()) refreshTitle();
            return;
        }
        recovery().offerAll([this](const RecoveryRecord& record) -> RecoveryKeeper& {
            return placeFor(record).recovery;
        });
        refreshTitle();
    });
}

void ScriptEditor::closed() {
    search_.reset();
    documents_.release();
    editor_ = {};
    outputControl_ = {};
}

/// Nothing that goes wrong in a handler may reach the toolkit.
void ScriptEditor::guarded(const std::function<void()>& action) {
    try {
        action();
    } catch (...) {
        outputControl_.send(sci::kSetText, 0, kNoMemory);
    }
}

void ScriptEditor::run(const std::function<void()>& action) {
    guarded([&] {
        action();
        recovery().keepIfDue();
    });
    if (debugger_.busy() || left_) return;
    if (std::exchange(exitWanted_, false)) return guarded([this] { exit(); });
    if (std::exchange(closeWanted_, false) && closeBox()) window_.endModal();
}

/// A script may take the process with it.
void ScriptEditor::drive(void (Debugger::*action)()) {
    do {
        restartWanted_ = false;
        takeMarkAway();
        if (debugger_.debugging()) showRun();
        recovery().keepIfChanged();
        inspection_.endLooking();
        inspection_.beginRun();
        onlyChecked_ = action == &Debugger::build;
        if (!debugger_.debugging()) {
            outputDocument_ = current().id;
            noteRunText();
            debugger_.use(breakpoints());
            measures_.begin();
            if (action == &Debugger::execute) lastOutput_.clear();
        }
        planBreakpoints();
        runBegan_ = session_.services().clock->monotonic();
        {
            const auto clock = breathe();
            (debugger_.*action)();
        }
        runEnded();
        noteBuild();
    } while (restartWanted_);
}

void ScriptEditor::command(int id) {
    if (left_) return;
    const int recent = id - command_id::kRecentFileFirst;
    if (recent >= 0 && recent < command_id::kRecentFiles) {
        if (!debugger_.busy() || (inspection_.held() && tabs_))
            run([this, recent] { openRecent(recent); });
        return;
    }
    const EditorCommand* command = findCommand(id);
    if (!command || !enabled(*command)) return;
    if (debugger_.busy() && commandWhileBusy(id)) return;
    run([this, command] {
        if (command->handler)
            (this->*command->handler)();
        else
            window_.windowCommand(command->id);
    });
}

bool ScriptEditor::enabled(const EditorCommand& command) const {
    if (debugger_.busy() && !servesWhileBusy(command)) return false;
    switch (command.enabledWhen) {
        case EnabledWhen::debugging:
            return debugger_.debugging() || inspection_.held();
        case EnabledWhen::steps:
            return (debugger_.debugging() || inspection_.held()) && !inspection_.isException();
        case EnabledWhen::looking:
            return inspection_.canLook() && !inspection_.isException();
        case EnabledWhen::tabs:
            return tabs_;
        case EnabledWhen::severalTabs:
            return tabs_ && documents_.count() > 1;
        case EnabledWhen::stoppable:
            return debugger_.debugging() || debugger_.busy();
        case EnabledWhen::running:
            return debugger_.busy() && !inspection_.held();
        case EnabledWhen::idle:
            return !debugger_.debugging() && !debugger_.busy();
        case EnabledWhen::canUndo:
            return editor_.send(sci::kCanUndo) != 0;
        case EnabledWhen::canRedo:
            return editor_.send(sci::kCanRedo) != 0;
        case EnabledWhen::canPaste:
            return window_.clipboardMayHaveText();
        case EnabledWhen::selection:
            return editor_.selectionStart() != editor_.selectionEnd();
        default:
            return true;
    }
}

/// Of a run that is held nothing is taken away that it goes on with.
bool ScriptEditor::servesWhileBusy(const EditorCommand& command) const {
    if (!command.handler) return true;
    if (!inspection_.held())
        return command.id == command_id::kStop || command.id == command_id::kPause;
    switch (command.id) {
        case command_id::kBuild:
        case command_id::kCrypt:
            return false;
        case command_id::kNew:
        case command_id::kOpen:
            return tabs_;
        case command_id::kCloseTab:
            return !runIsShown();
        default:
            return true;
    }
}

bool ScriptEditor::key(const KeyPress& key, bool inText) {
    const EditorCommand* const record = commandOfKey(key, inText);
    if (record) command(record->id);
    return record != nullptr;
}

void ScriptEditor::tick() {
    if (!left_) run([] {});
}

void ScriptEditor::endingSoon() {
    if (!left_) guarded([this] { recovery().keepIfChanged(); });
}

bool ScriptEditor::closeBox() {
    if (left_) return true;
    if (debugger_.busy()) {
        closeWanted_ = true;
        endBusyRun();
        return false;
    }
    guarded([this] {
        if (!mayLeave(false)) return;
        if (takeTextForHost())
            leave();
        else
            output_.show(kNoMemory);
    });
    return left_;
}

void ScriptEditor::endBusyRun() {
    debugger_.stop();
    if (inspection_.held()) inspection_.end();
}

/// The text is the host's own, and goes back to it.
bool ScriptEditor::isHostsOwn(const OpenDocument& one) const {
    return hostFile_.empty() && one.id == hostDocument_ && (!tabs_ || one.document.path().empty());
}

/// Whether the editor may go. Changes in files are written, or the user says what becomes of them;
/// nothing is given up before the last answer, and what is given up is in the backups.
bool ScriptEditor::mayLeave(bool asks) {
    std::vector<OpenDocument*> givenUp;
    OpenDocument& before = current();
    for (std::size_t i = 0; i < documents_.count(); ++i) {
        OpenDocument& one = documents_.at(i);
        if (!one.document.modified() || isHostsOwn(one)) continue;
        show(one);
        const bool isHosts = one.id == hostDocument_ && one.document.path() == hostFile_;
        const Answer answer = asks || !isHosts ? askAboutChanges() : Answer::yes;
        if (answer == Answer::cancel) return show(before), false;
        if (answer == Answer::yes && !saveWhole()) return false;
        if (answer == Answer::no) givenUp.push_back(&one);
    }
    for (OpenDocument* const one : givenUp) {
        documents_.show(*one);
        giveUp();
    }
    return true;
}

Answer ScriptEditor::askAboutChanges() {
    std::string question = EditorDocument::kSaveChanges;
    if (documents_.count() > 1) question += "\n\n" + document().name();
    return window_.ask(question, true);
}

/// False: there are changes still. An empty text has been written though it counts as changed.
bool ScriptEditor::saveWhole() {
    save();
    return !document().modified() || editor_.length() == 0;
}

void ScriptEditor::giveUp() {
    recovery().givenUp();
    document().setModified(false);
}

const std::string& ScriptEditor::documentPath() const {
    const OpenDocument* const found = documents_.find(hostDocument_);
    return (found ? *found : current()).document.path();
}

/// Without the whole text, or when the user has closed it, the host keeps the one that it gave.
bool ScriptEditor::takeTextForHost() {
    OpenDocument* const hosts = documents_.find(hostDocument_);
    if (!hosts) return true;
    documents_.show(*hosts);
    if (!editor_.exists() || document().incomplete() || current().isTour()) return true;
    std::optional<std::string> bytes = document().bytes();
    if (bytes) hostText_ = std::move(*bytes);
    return bytes.has_value();
}

/// The host has its own text; for every other one that is not saved there is a copy, as far as
/// memory lasts.
void ScriptEditor::leave(bool delivers) {
    left_ = true;
    for (std::size_t i = 0; i < documents_.count(); ++i)
        guarded([this, &one = documents_.at(i), delivers] {
            documents_.show(one);
            rememberFile();
            const bool isHosts = one.id == hostDocument_ && one.document.path().empty();
            one.recovery.closing(delivers && isHosts);
        });
    debugger_.close();
}

void ScriptEditor::exit() {
    if (debugger_.busy()) {
        exitWanted_ = true;
        return endBusyRun();
    }
    endRun();
    if (!mayLeave(true)) return;
    // Deliberate: the host gets back the text that it gave.
    leave(false);
    window_.endModal();
}

void ScriptEditor::setTheme(const ThemeTable* theme, const CodeFont& font) {
    guarded([&] { view_.useTheme(theme, font); });
}

/// Where nothing is inspected everything is as it always was: only saving takes the star away.
void ScriptEditor::noteSavePoint() {
    if (document().modified()) return;
    current().savePoint = starFollowsUndo_;
    if (starFollowsUndo_) editor_.send(sci::kSetSavePoint);
}

void ScriptEditor::refreshTitle() {
    noteSavePoint();
    window_.setTitle(document().title());
}

void ScriptEditor::openFind() {
    window_.openFind(std::make_unique<FindDialog>(search_, window_));
}

void ScriptEditor::openReplace() {
    window_.openReplace(std::make_unique<ReplaceDialog>(search_, window_));
}

/// With nothing searched for yet there is nothing to repeat: the text is asked for.
void ScriptEditor::repeatSearch(bool forward) {
    const std::string text = search_->lastText();
    if (text.empty()) return openFind();
    if (!(forward ? search_->findNext(text) : search_->findPrevious(text))) window_.beep();
}

void ScriptEditor::gotoLine() {
    if (const auto line = window_.askLine(toScript(editor_.caretLine()).number))
        search_->gotoLine(*line);
}

void ScriptEditor::helpAt(const std::string& function) {
    openManual(manualPlaceOf(families_, function), function);
}

void ScriptEditor::helpOnException() {
    const std::string& exception = inspection_.stop().text;
    openManual(exceptionPlace(exception), exception);
}

/// `place` is empty for the manual's beginning; `heading` stands there, if the manual knows it.
void ScriptEditor::openManual(const std::string& place, const std::string& heading) {
    const std::string index = manualPage(programFolder_);
    const std::string folder = index.substr(0, index.find_last_of("/\\") + 1);
    if (!place.empty() && window_.openDocument(folder + place)) return;
    if (window_.openDocument(index)) return;
    const auto read = [this](const std::string& page, std::string& text) {
        return readFile(files_, page, kLargestPage, text) == 0;
    };
    std::string text, page = folder + place.substr(0, place.find('#'));
    if (place.empty() || !read(page, text)) {
        const bool there = read(index, text);
        return window_.errorBox(there ? kNoBrowser + decodeForDisplay(index) : kNoManual);
    }
    const std::string anchor = "id=\"" + place.substr(place.find('#') + 1) + "\"";
    page = kNoBrowserFor + decodeForDisplay(page);
    if (text.find(anchor) != std::string::npos) page += kUnderHeading + ("\"" + heading + "\".");
    window_.errorBox(page);
}

void ScriptEditor::toggleRecoveryCopies() {
    recovery().setEnabled(!recovery().enabled());
    window_.setMenuChecked(command_id::kRecoveryCopies, recovery().enabled());
}

}  // namespace korvant
