// What the editor does around a script that stands still, beyond the classic debugger.
#include <exception>

#include "base/system/file_io.h"
#include "base/text/characters.h"
#include "base/text/number_text.h"
#include "base/text/text_encoding.h"
#include "editor/script_editor.h"
#include "editor/stops/exception_detail.h"

namespace korvant {

namespace {

constexpr std::size_t kLongestShown = 1000;  // bytes of an expression

}  // namespace

/// A run that stands still ends as it began.
void ScriptEditor::setInspecting(bool inspecting) {
    starFollowsUndo_ = inspecting;
    runEnded();
    noteSavePoint();
}

/// Unless one goes on: then this comes again.
void ScriptEditor::runEnded() {
    if (debugger_.busy() || debugger_.debugging()) return;
    inspection_.endRun();
    inspection_.setEnabled(starFollowsUndo_);
}

/// The one book for all wishes; a run looks at it as it is when it begins or goes on.
void ScriptEditor::planBreakpoints() {
    OpenDocument* const ran = documents_.find(runDocument_);
    if (!ran) return;
    inspection_.session().breakpoints().setLines(
        {}, inspection_.enabled() ? ran->plan.refined() : std::vector<BreakpointWish>());
    planOtherSources();
    inspection_.session().apply();
}

/// A breakpoint belongs to its file: those of a text that the run has as a source stop there.
void ScriptEditor::planOtherSources() {
    const auto code = inspection_.session().code();
    if (!code) return;
    for (const std::string& source : code->otherSources()) {
        std::vector<BreakpointWish> wishes;
        const OpenDocument* const open = documents_.findSource(source);
        if (open && open->id != runDocument_)
            wishes = open == &current() ? open->plan.active() : open->stops;
        // Who looks at nothing knows conditions of the classic kind alone.
        if (!inspection_.enabled())
            for (BreakpointWish& wish : wishes) {
                const std::int32_t line = wish.place.line;
                wish = {};
                wish.place.line = line;
            }
        inspection_.session().breakpoints().setLines(source, std::move(wishes));
    }
}

/// What the script that is built calls the text in view; nothing where it is no part of it.
std::optional<std::string> ScriptEditor::sourceInView(const CodeLines& code) const {
    if (runIsShown()) return changedSinceRun() ? std::nullopt : std::optional<std::string>("");
    for (const std::string& source : code.otherSources())
        if (documents_.findSource(source) == &current()) return source;
    return std::nullopt;
}

std::optional<Debugger::Elsewhere> ScriptEditor::stopElsewhere(ScriptLine line) const {
    const std::string source = stopPlace().source;
    if (source.empty()) return std::nullopt;
    const OpenDocument* const open = documents_.findSource(source);
    return Debugger::Elsewhere{decodeForDisplay(nameOf(source)),
                               open ? open->breakpoints.condition(line) : std::string()};
}

void ScriptEditor::noteRunText() {
    runDocument_ = current().id;
    runText_ = comparedText_ = current().version;
    comparedOther_ = false;
    if (!inspection_.enabled()) return;
    const std::string text = editor_.text().value_or(std::string());
    runLength_ = text.size();
    runHash_ = contentHash(text);
}

/// What is not in view cannot change, and is as it was when it was seen last.
bool ScriptEditor::changedSinceRun() const {
    const OpenDocument* const ran = documents_.find(runDocument_);
    if (!ran || !inspection_.enabled()) return !ran || ran->version != runText_;
    if (ran->version == runText_) return false;
    if (ran->version != comparedText_ && runIsShown()) {
        comparedText_ = ran->version;
        comparedOther_ = static_cast<std::size_t>(editor_.length()) != runLength_ ||
                         contentHash(editor_.text().value_or(std::string())) != runHash_;
    }
    return ran->version != comparedText_ || comparedOther_;
}

void ScriptEditor::showRun() {
    if (OpenDocument* const ran = documents_.find(runDocument_)) show(*ran);
}

/// Where it stands still; the line is that of the text as it is now.
ScriptPlace ScriptEditor::stopPlace() const {
    ScriptPlace place = inspection_.stop().place;
    if (inspection_.standsStill() && !place.source.empty()) return place;
    if (!inspection_.held()) return {{}, debugger_.stoppedAt(), 0};
    if (place.source.empty()) place.line = debugger_.lineInText(place.line);
    return place;
}

std::int32_t ScriptEditor::lineInView(const ScriptPlace& place) const {
    const bool inView =
        place.source.empty() ? runIsShown() : documents_.findSource(place.source) == &current();
    return inView ? std::max(place.line, 0) : 0;
}

/// A stop in another text than that of the run, if there is a file of it.
bool ScriptEditor::showStop() {
    const ScriptPlace place = stopPlace();
    if (place.source.empty() || !showSource(place.source)) return false;
    if (!inspection_.enabled()) markStopHere(place.line);
    gotoScriptLine(place.line);
    return true;
}

/// In the text in view, which is not the one that runs, with the one marker that there is where
/// nobody looks into runs.
void ScriptEditor::markStopHere(std::int32_t line) {
    markedDocument_ = current().id;
    breakpoints().prepareRun();
    breakpoints().becomeCurrentLine();
    breakpoints().markCurrent(toControl(ScriptLine{line}));
}

void ScriptEditor::takeMarkAway() {
    OpenDocument* const marked = documents_.find(std::exchange(markedDocument_, 0));
    if (!marked) return;
    show(*marked);
    breakpoints().restore();
}

bool ScriptEditor::showSource(const std::string& source) {
    if (OpenDocument* const open = documents_.findSource(source)) return show(*open), true;
    if (!tabs_) return false;
    FileStatus status;
    if (files_.status(source, status) != 0 || status.kind != FileStatus::Kind::regular)
        return false;
    openTab(source);
    return documents_.findSource(source) == &current();
}

std::string ScriptEditor::fileOf(const ScriptPlace& place) const {
    if (!place.source.empty()) return decodeForDisplay(nameOf(place.source));
    const OpenDocument* const ran = documents_.find(runDocument_);
    return ran && !ran->document.path().empty() ? ran->document.name() : std::string();
}

void ScriptEditor::showFrame(unsigned frame) {
    guarded([&] {
        const std::vector<DebugFrame> stack = inspection_.stack();
        if (frame >= stack.size()) return;
        const ScriptPlace& place = stack[frame].place;
        place.source.empty() ? showRun() : static_cast<void>(showSource(place.source));
    });
}

std::vector<PlannedBreakpoint> ScriptEditor::plannedBreakpoints() {
    const auto code = inspection_.session().code();
    const auto source =
        code && inspection_.enabled() ? sourceInView(*code) : std::optional<std::string>();
    std::vector<PlannedBreakpoint> planned =
        source ? plan().all(code.get(), *source) : plan().all(nullptr);
    // Of a text that is not built it is known where there is nothing at all.
    if (!source)
        for (PlannedBreakpoint& one : planned)
            one.verified = hasWords(toControl(ScriptLine{one.line}));
    return planned;
}

/// Something beside blanks and comments.
bool ScriptEditor::hasWords(ControlLine line) const {
    constexpr std::intptr_t kComment = 1, kLastComment = 3;  // styles
    const int start = editor_.lineStart(line);
    const std::string text = editor_.textOf({start, editor_.lineEnd(line)});
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == ' ' || text[i] == '\t') continue;
        const auto style = editor_.send(sci::kGetStyleAt, static_cast<std::uintptr_t>(start) + i);
        if (style < kComment || style > kLastComment) return true;
    }
    return false;
}

void ScriptEditor::changeBreakpoint(std::int32_t line, const BreakpointWishes& wishes) {
    guarded([&] {
        plan().change(line, wishes);
        planBreakpoints();
    });
}

void ScriptEditor::editBreakpoints(const std::function<void(BreakpointPlan&)>& action) {
    guarded([&] {
        action(plan());
        planBreakpoints();
    });
}

/// A run that is under way or held has its own ways to end and to go on.
bool ScriptEditor::commandWhileBusy(int id) {
    if (!inspection_.held()) return id == command_id::kStop ? endBusyRun() : pauseRun(), true;
    switch (id) {
        case command_id::kExecute:
            return inspection_.goOn(), true;
        case command_id::kStop:
            return inspection_.end(), true;
        case command_id::kRestart:
            restartWanted_ = true;
            return inspection_.end(), true;
        case command_id::kStepOver:
        case command_id::kStepNext:
            return inspection_.stepOver(), true;
        case command_id::kStepInto:
            return inspection_.stepInto(), true;
        case command_id::kStepOut:
            return inspection_.stepOut(), true;
        case command_id::kRunToCaret:
            return inspection_.runTo(placeAtCaret()), true;
        default:
            return false;
    }
}

/// Where nobody looks into runs, the window waits for their end as it always did.
std::unique_ptr<AttentionClock> ScriptEditor::breathe() {
    if (!inspection_.enabled()) return nullptr;
    return std::make_unique<AttentionClock>(inspection_.session());
}

void ScriptEditor::stepOut() {
    resume([this] { inspection_.session().stepOut(); });
}

/// Over what is called, however often it stops in between, as other editors do it.
void ScriptEditor::stepNext() {
    resume([this] { inspection_.session().stepOver(); });
}

std::string ScriptEditor::lastOutput() const {
    return decodeForDisplay(lastOutput_.text());
}

ScriptPlace ScriptEditor::placeAtCaret() const {
    return {runIsShown() ? std::string() : document().path(), toScript(editor_.caretLine()).number,
            0};
}

void ScriptEditor::runToCaret() {
    resume([this, place = placeAtCaret()] { inspection_.session().runTo(place); });
}

/// Of a held run the values are read in the frame that is looked at.
void ScriptEditor::displayVariable() {
    if (!inspection_.held()) return debugger_.displayVariable();
    const std::string selected = editor_.selectedText(kLongestShown);
    const std::string name(trimmed(selected, kAllBlanks));
    if (name.empty()) return;
    const ShownValue shown =
        inspection_.session().show(inspection_.frame(), name, EvaluationPurpose::hover);
    if (!shown.error.empty()) return;
    const std::string text = shown.value.type + " " + name + " = " + shown.value.value;
    editor_.showTip(editor_.selectionStart(), text);
    output_.showAbove(text);
}

/// In its own way to go on, which says what became of the run through the session.
void ScriptEditor::resume(const std::function<void()>& goOn) {
    if (!inspection_.canLook()) return;
    showRun();
    planBreakpoints();
    runBegan_ = session_.services().clock->monotonic();
    const auto clock = breathe();
    debugger_.resume([this, &goOn] {
        inspection_.session().setHostLines(debugger_.runningLines());
        goOn();
        RunOutcome outcome;
        if (inspection_.session().state() == DebugState::suspended) {
            outcome.kind = RunOutcome::Kind::stopped;
            outcome.line = inspection_.stop().place.line;
        } else if (session_.lastFailure().kind == RunFailure::Kind::none) {
            outcome.kind = RunOutcome::Kind::finished;
        }
        return outcome;
    });
}

std::string ScriptEditor::explainException() {
    std::string detail;
    guarded([&] {
        const int line = inspection_.stop().place.line;
        if (!inspection_.isException() || line < 1 || changedSinceRun()) return;
        if (!inspection_.stop().place.source.empty() || !runIsShown()) return;
        const ControlLine at = toControl(ScriptLine{line});
        detail = korvant::exceptionDetail(
            inspection_.stop().text, editor_.textOf({editor_.lineStart(at), editor_.lineEnd(at)}),
            [this](const std::string& expression) -> std::optional<DebugValue> {
                ShownValue shown =
                    inspection_.session().show(0, expression, EvaluationPurpose::hover);
                if (!shown.error.empty()) return std::nullopt;
                return std::move(shown.value);
            });
    });
    return detail;
}

void ScriptEditor::pauseRun() {
    if (inspection_.enabled() && debugger_.busy() && !inspection_.held()) inspection_.pause();
}

void ScriptEditor::restartRun() {
    endRun();
    drive(&Debugger::execute);
}

void ScriptEditor::toggleBreakpoint() {
    toggleBreakpointAt(toScript(editor_.caretLine()).number);
}

/// Where a script cannot stop, whoever sets the breakpoint is told.
void ScriptEditor::toggleBreakpointAt(std::int32_t line) {
    editBreakpoints([this, line](BreakpointPlan& plan) {
        // The classic layout first shows again what the arrow has put aside.
        if (!inspection_.enabled())
            plan.toggle(line);
        else
            plan.has(line) ? plan.remove(line) : plan.change(line, {});
        if (!plan.has(line) || !window_.explains()) return;
        for (const PlannedBreakpoint& one : plannedBreakpoints())
            if (one.line == line && !one.verified) {
                outputDocument_ = current().id;
                output_.showAbove("Line " + formatInt(line) +
                                  " has no code: the script does not stop there.");
            }
    });
}

void ScriptEditor::removeBreakpoint() {
    editBreakpoints(
        [this](BreakpointPlan& plan) { plan.remove(toScript(editor_.caretLine()).number); });
}

void ScriptEditor::deleteBreakpoints() {
    editBreakpoints([](BreakpointPlan& plan) { plan.removeAll(); });
}

void ScriptEditor::switchBreakpoint() {
    editBreakpoints([this](BreakpointPlan& plan) {
        const std::int32_t line = toScript(editor_.caretLine()).number;
        if (plan.has(line)) plan.switchOnOff(line);
    });
}

/// The suspended run that a build ends may be another text's.
void ScriptEditor::build() {
    if (debugger_.debugging() && !runIsShown()) {
        OpenDocument& wanted = current();
        stopDebugging();
        show(wanted);
    }
    drive(&Debugger::build);
}

/// What the end changes in the text is right only while that is shown.
void ScriptEditor::endRun() {
    takeMarkAway();
    if (debugger_.debugging()) showRun();
    debugger_.stop();
    runEnded();
}

void ScriptEditor::stopDebugging() {
    inspection_.endLooking();
    endRun();
}

/// What a host has registered is coloured like the functions and types of this module.
const ColouredNames& ScriptEditor::libraryNames() {
    if (!libraryNames_.functions.empty() || engine_ == nullptr) return libraryNames_;
    const auto add = [](std::string& names, const char* name) {
        if (name != nullptr) names.append(names.empty() ? "" : " ").append(name);
    };
    for (asUINT i = 0; i < engine_->GetGlobalFunctionCount(); ++i)
        add(libraryNames_.functions, engine_->GetGlobalFunctionByIndex(i)->GetName());
    for (asUINT i = 0; i < engine_->GetObjectTypeCount(); ++i)
        add(libraryNames_.types, engine_->GetObjectTypeByIndex(i)->GetName());
    for (asUINT i = 0; i < engine_->GetEnumCount(); ++i)
        add(libraryNames_.types, engine_->GetEnumByIndex(i)->GetName());
    return libraryNames_;
}

std::vector<OutlineEntry> ScriptEditor::useIndex(const ScopeIndex& index) {
    std::vector<OutlineEntry> entries;
    guarded([&] {
        entries = outlineEntries(index);
        ColouredNames names = libraryNames();
        names.types += " " + typeNamesOf(index);
        names.values = valueNamesOf(index);
        view_.useNames(std::move(names));
    });
    return entries;
}

void ScriptEditor::gotoBytes(std::size_t position) {
    window_.focusEditor();
    editor_.send(sci::kEnsureVisible,
                 static_cast<std::uintptr_t>(editor_.lineOf(static_cast<int>(position)).index));
    editor_.gotoPosition(static_cast<int>(position));
}

void ScriptEditor::watchWord() {
    std::string text = editor_.selectedText(kLongestShown);
    if (text.empty()) text = editor_.textOf(editor_.wordAt(editor_.caret()));
    inspection_.addWatch(text);
}

void ScriptEditor::gotoScriptLine(std::int32_t line) {
    if (line > 0) gotoPlace({{line}, 1});
}

void ScriptEditor::gotoProblem(const Diagnostic& problem) {
    gotoPlace({{problem.line}, problem.column});
}

void ScriptEditor::nextProblem() {
    const EditorStatus at = status();
    if (const Diagnostic* problem = current().problems.next(at.line, at.column))
        gotoProblem(*problem);
}

void ScriptEditor::previousProblem() {
    const EditorStatus at = status();
    if (const Diagnostic* problem = current().problems.previous(at.line, at.column))
        gotoProblem(*problem);
}

const Diagnostic* ScriptEditor::problemAtCaret() const {
    const std::int32_t line = toScript(editor_.caretLine()).number;
    const int column = editor_.caret() - editor_.lineStart(editor_.caretLine()) + 1;
    const Diagnostic* found = nullptr;
    for (const Diagnostic& one : current().problems.all()) {
        if (one.line != line || one.kind == Diagnostic::Kind::information) continue;
        if (one.column <= column && column <= one.endColumn) return &one;
        if (found == nullptr) found = &one;
    }
    return found;
}

std::optional<std::string> ScriptEditor::scriptBytes() {
    std::optional<std::string> bytes;
    guarded([&] { bytes = document().scriptBytes(); });
    return bytes;
}

void ScriptEditor::setProblems(std::vector<Diagnostic> found) {
    guarded([&] { current().problems.set(std::move(found)); });
}

/// After a build: what it said, of the text as it is.
void ScriptEditor::noteBuild() {
    if (!inspection_.enabled()) return;
    const std::optional<std::string> text = document().scriptBytes();
    current().problems.setBuilt(
        diagnosticsOf(session_.buildMessages().all(), text.value_or(std::string())));
}

}  // namespace korvant
