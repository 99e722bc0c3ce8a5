#include "editor/stops/debugger.h"

#include <algorithm>

#include "base/text/number_text.h"
#include "base/text/text_encoding.h"
#include "editor/control/command_ids.h"
#include "editor/stops/condition_check.h"

namespace korvant {

namespace {

constexpr char kNoError[] = "Builded, no error.";
constexpr char kTimedOut[] =
    "The script was aborted before it could finish. Probably it timed out.\n";
constexpr std::uint64_t kPumpEvery = 50;  // milliseconds
/// A limit that began this much after a continuation was started afresh inside it.
constexpr std::int32_t kRestartSeen = 50;  // milliseconds
constexpr int kFarUp = -99999999;

}  // namespace

/// While one lives a script is driven, and the window knows.
class Debugger::BusyMark {
  public:
    explicit BusyMark(Debugger& debugger) : debugger_(debugger) { set(true); }
    ~BusyMark() { set(false); }
    BusyMark(const BusyMark&) = delete;
    BusyMark& operator=(const BusyMark&) = delete;

  private:
    void set(bool busy) noexcept {
        debugger_.busy_ = busy;
        try {
            debugger_.setRunMenu();
            debugger_.window_.setRunning(busy);
        } catch (...) {
            // Without memory the menu stays as it is, to the next change.
        }
    }

    Debugger& debugger_;
};

Debugger::Debugger(const DebuggerParts& parts, ScriptText scriptText)
    : session_(parts.session),
      core_(parts.core),
      window_(parts.window),
      editor_(parts.editor),
      output_(parts.output),
      breakpoints_(&parts.breakpoints),
      scriptText_(std::move(scriptText)) {}

void Debugger::setHost(asIScriptEngine* engine, asIScriptContext* context) {
    engine_ = engine;
    context_ = context;
}

void Debugger::setUp() {
    debugging_ = false;
    session_.forgetContext();
    breakpoints_->setUp();
    setRunMenu();
}

void Debugger::setRunMenu() {
    for (const int command : {command_id::kStepOver, command_id::kStepInto})
        window_.setMenuEnabled(command, debugging_);
    window_.setMenuEnabled(command_id::kStop, debugging_ || busy_);
}

/// The text of a build or a run that may begin now.
std::optional<std::string> Debugger::beginRun() {
    output_.clear();
    std::optional<std::string> text = scriptText_();
    if (!text) output_.show(kNoMemory);
    if (!text || text->empty()) return std::nullopt;
    breakpoints_->prepareRun();
    lines_.begin(editor_.lineCount());
    lastPump_ = session_.services().clock->monotonic();
    usedTime_ = 0;
    return text;
}

void Debugger::build() {
    if (busy_) return;
    // The suspended run ends with the module that it belongs to.
    if (debugging_) endDebugging();
    const BusyMark mark(*this);
    const std::optional<std::string> text = beginRun();
    if (!text) return;
    const bool built = session_.compile(engine_, *text) != 0;
    if (session_.buildMessages().count() == 0) {
        output_.show(kNoError);
        breakpoints_->restore();
    } else if (built) {
        output_.show(messageTexts());
    } else {
        failedBuild(false);
    }
}

void Debugger::failedBuild(bool showFirst) {
    breakpoints_->markErrors(messageLines());
    const std::optional<ScriptLine> first = firstError();
    if (showFirst && first) scrollTo(toControl(*first));
    output_.show(messageTexts());
}

void Debugger::execute() {
    if (busy_) return;
    const BusyMark mark(*this);
    if (debugging_)
        continueRun(StepMode::run);
    else
        startRun();
}

void Debugger::stepOver() {
    if (busy_ || !debugging_) return;
    const BusyMark mark(*this);
    continueRun(StepMode::over);
}

void Debugger::stepInto() {
    if (busy_ || !debugging_) return;
    const BusyMark mark(*this);
    continueRun(StepMode::into);
}

void Debugger::resume(const std::function<RunOutcome()>& goOn) {
    if (busy_ || !debugging_) return;
    const BusyMark mark(*this);
    breakpoints_->prepareRun();
    const RunOutcome outcome = goOn();
    if (!outcome.stoppedAtLine()) return finishRun(outcome.failed());
    const ScriptLine line{outcome.line};
    const std::optional<Elsewhere> other = elsewhere ? elsewhere(line) : std::nullopt;
    output_.show("Breakpoint reached at line " +
                 formatInt((other ? line : lines_.editorLine(line)).number) +
                 (other ? " of " + other->file : std::string()) + "\n");
    showAt(line);
}

void Debugger::startRun() {
    const std::optional<std::string> text = beginRun();
    if (!text) return;
    const std::vector<std::int32_t> lines = breakpoints_->kept();
    ran_ = true;
    const RunOutcome outcome = session_.runApplication(engine_, context_, *text, &lines);
    if (outcome.stoppedAtLine()) return beginDebugging({outcome.line});
    const bool failed = outcome.failed();
    if (failed && session_.buildMessages().count() > 0) {
        toStart();
        failedBuild(true);
        return;
    }
    showEnd(failed);
    toStart();
    breakpoints_->restore();
}

void Debugger::beginDebugging(ScriptLine line) {
    debugging_ = true;
    setRunMenu();
    breakpoints_->becomeCurrentLine();
    if (shouldStop(line))
        showAt(line);
    else
        continueRun(StepMode::run);
}

std::vector<std::int32_t> Debugger::runningLines() const {
    return lines_.runningLines(breakpoints_->kept());
}

std::vector<std::int32_t> Debugger::linesBehindHold() {
    breakpoints_->prepareRun();
    return runningLines();
}

void Debugger::continueRun(StepMode mode) {
    breakpoints_->prepareRun();
    usedTime_ = 0;
    for (;;) {
        const std::vector<std::int32_t> lines = runningLines();
        const std::uint32_t startTick = session_.services().clock->tick();
        const RunOutcome outcome = session_.continueApplication(engine_, context_, &lines, mode);
        if (!outcome.stoppedAtLine()) return finishRun(outcome.failed());
        const ScriptLine line{outcome.line};
        if (shouldStop(line)) return showAt(line);
        if (outOfTime(startTick)) {
            session_.abandon(context_);
            session_.messageBox(kTimedOut, box_style::kIconError);
            return finishRun(true);
        }
        if (giveWindowTime()) session_.requestStop();
    }
}

/// A condition that is never true must not let an endless script go on for ever: continuations
/// that nobody asked for share one time limit. Waiting for the user starts the limit afresh.
bool Debugger::outOfTime(std::uint32_t startTick) {
    const std::uint32_t limitBegan = session_.limitBegan();
    const bool restarted = static_cast<std::int32_t>(limitBegan - startTick) > kRestartSeen;
    const std::uint32_t used =
        session_.services().clock->tick() - (restarted ? limitBegan : startTick);
    usedTime_ = restarted ? used : usedTime_ + used;
    return usedTime_ > session_.maxRunTime();
}

bool Debugger::giveWindowTime() {
    const std::uint64_t now = session_.services().clock->monotonic();
    if (now - lastPump_ < kPumpEvery) return false;
    const bool stopWanted = window_.pumpEvents();
    lastPump_ = session_.services().clock->monotonic();
    return stopWanted;
}

void Debugger::finishRun(bool failed) {
    showEnd(failed);
    endDebugging();
}

void Debugger::endDebugging() {
    toStart();
    breakpoints_->restore();
    session_.buildMessages().clear();
    session_.forgetLine();
    debugging_ = false;
    setRunMenu();
}

void Debugger::stop() {
    if (busy_)
        session_.requestStop();
    else if (debugging_)
        endDebugging();
}

void Debugger::close() {
    if (!busy_ && ran_) session_.abandon(context_);
}

void Debugger::toStart() {
    window_.focusEditor();
    editor_.select(0, 0);
}

void Debugger::showAt(ScriptLine line) {
    const ControlLine shown = toControl(lines_.editorLine(line));
    stoppedAt_ = line.number;
    breakpoints_->becomeCurrentLine();
    if (showsElsewhere && showsElsewhere()) return;
    window_.activate();
    window_.focusEditor();
    // The line of a text that is not at hand is none of this one.
    if (elsewhere && elsewhere(line)) return;
    breakpoints_->markCurrent(shown);
    scrollTo(shown);
}

void Debugger::scrollTo(ControlLine line) {
    const int position = editor_.lineStart(line);
    editor_.send(sci::kEnsureVisible, static_cast<std::uintptr_t>(line.index));
    editor_.select(position, position);
    editor_.scrollLines(kFarUp);
    // Folds above it are no lines to scroll over.
    editor_.scrollLines(static_cast<int>(
        editor_.send(sci::kVisibleFromDocLine, static_cast<std::uintptr_t>(line.index))));
}

bool Debugger::shouldStop(ScriptLine running) {
    const std::optional<Elsewhere> other = elsewhere ? elsewhere(running) : std::nullopt;
    const ScriptLine line = other ? running : lines_.editorLine(running);
    const std::string condition = other ? other->condition : breakpoints_->condition(line);
    const std::string place = "reakpoint reached at line " + formatInt(line.number) +
                              (other ? " of " + other->file : std::string());
    if (condition.empty()) {
        output_.show("B" + place + "\n");
        return true;
    }
    if (!conditionHolds(condition)) return false;
    output_.show("Conditional b" + place + " (" + decodeForDisplay(condition) + ")\n");
    return true;
}

/// A condition that fails stops nothing and says nothing.
bool Debugger::conditionHolds(const std::string& condition) {
    bindVariables(condition);
    const ExpressionResult result = evaluator_.evaluate(condition);
    // Not-a-number is not 0 and stops.
    return result.error.empty() && !(result.value == 0.0);
}

void Debugger::follow(const LineShift& shift) {
    breakpoints_->follow(shift);
    if (debugging_ || busy_) lines_.follow(shift);
}

void Debugger::addCondition(Breakpoints& breakpoints, ControlLine line) {
    breakpoints.ensure(line);
    const ScriptLine number = toScript(line);
    std::string condition =
        session_.coveredFrontend().promptString("Condition:", breakpoints.condition(number));
    const std::string problem = conditionProblem(condition);
    breakpoints.setCondition(number, std::move(condition));
    if (!problem.empty()) window_.errorBox(problem);
}

}  // namespace korvant
