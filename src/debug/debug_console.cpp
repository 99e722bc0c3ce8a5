#include "debug/debug_console.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace korvant {

namespace {

constexpr char kPrompt[] = "(korvant) ";

std::string trimmed(std::string_view text) {
    const auto begin = text.find_first_not_of(" \t\r");
    if (begin == std::string_view::npos) return {};
    return std::string(text.substr(begin, text.find_last_not_of(" \t\r") - begin + 1));
}

/// Cuts the first word off.
std::string takeWord(std::string& rest) {
    const auto end = rest.find_first_of(" \t");
    std::string word = rest.substr(0, end);
    rest = end == std::string::npos ? std::string() : trimmed(std::string_view(rest).substr(end));
    return word;
}

std::optional<int> numberIn(const std::string& text) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, number);
    if (text.empty() || error != std::errc() || stopped != end) return std::nullopt;
    return number;
}

/// "WHAT if CONDITION"
void takeCondition(const std::string& rest, std::string& what, std::string& condition) {
    const auto word = rest.find(" if ");
    what = trimmed(rest.substr(0, word));
    condition = word == std::string::npos ? std::string() : trimmed(rest.substr(word + 4));
}

const char* wordsFor(ExceptionKind kind) {
    switch (kind) {
        case ExceptionKind::caught:
            return "caught by the script";
        case ExceptionKind::lost:
            return "ignored by the library";
        case ExceptionKind::unhandled:
            break;
    }
    return "unhandled";
}

/// Where the sign of an assignment stands, and no part of a comparison or of an operator that
/// assigns, nor in a text; npos: nowhere.
std::size_t assignmentIn(std::string_view text) {
    char quote = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != 0) {
            if (c == '\\') ++i;
            if (c == quote) quote = 0;
            continue;
        }
        if (c == '"' || c == '\'') quote = c;
        if (c != '=') continue;
        if (i + 1 < text.size() && text[i + 1] == '=')
            ++i;
        else if (i == 0 ||
                 std::string_view("<>!+-*/%&|^").find(text[i - 1]) == std::string_view::npos)
            return i;
    }
    return std::string_view::npos;
}

bool namesCommand(const std::string& names, const std::string& word) {
    const std::string padded = " " + names + " ";
    return padded.find(" " + word + " ") != std::string::npos;
}

}  // namespace

const std::vector<DebugConsole::Command>& DebugConsole::commands() {
    static const std::vector<Command> all = {
        {"run r restart", "", "runs the script from its beginning", &DebugConsole::doRun},
        {"continue c", "", "goes on to the next stop", &DebugConsole::doContinue},
        {"step s", "", "to the next line, into functions", &DebugConsole::doStep},
        {"next n", "", "to the next line of this function", &DebugConsole::doNext},
        {"finish fin", "", "until the call that is looked at has returned",
         &DebugConsole::doFinish},
        {"until u", "LINE", "to a line", &DebugConsole::doUntil},
        {"break b", "LINE or FUNCTION [if CONDITION]", "sets a breakpoint", &DebugConsole::doBreak},
        {"watch", "EXPRESSION [if CONDITION]", "stops when its value changes",
         &DebugConsole::doWatch},
        {"catch", "never, unhandled, all or lost", "which exceptions stop", &DebugConsole::doCatch},
        {"condition", "N [CONDITION]", "of a breakpoint; none: always", &DebugConsole::doCondition},
        {"hits", "N [= >= > < <= % COUNT]", "at which passes a breakpoint stops",
         &DebugConsole::doHits},
        {"log", "N [TEXT with {EXPRESSIONS}]", "writes it instead of stopping",
         &DebugConsole::doLog},
        {"delete d", "[N]", "removes a breakpoint, or all", &DebugConsole::doDelete},
        {"enable", "N", "a breakpoint that was disabled", &DebugConsole::doEnable},
        {"disable", "N", "keeps a breakpoint that does not stop", &DebugConsole::doDisable},
        {"info i", "[breakpoints, locals, args, globals, this, frame or stack]",
         "what became of breakpoints, or what is there", &DebugConsole::doInfo},
        {"where backtrace bt", "", "the calls that have not returned", &DebugConsole::doWhere},
        {"frame f", "[N]", "looks at another call", &DebugConsole::doFrame},
        {"up", "", "looks at the caller", &DebugConsole::doUp},
        {"down", "", "looks at what was called", &DebugConsole::doDown},
        {"print p", "EXPRESSION", "shows a value", &DebugConsole::doPrint},
        {"print/x p/x", "EXPRESSION", "shows integers with base 16", &DebugConsole::doHex},
        {"set", "NAME = EXPRESSION", "changes a variable, member or element", &DebugConsole::doSet},
        {"locals", "", "the variables of this call", &DebugConsole::doLocals},
        {"globals", "", "the global variables", &DebugConsole::doGlobals},
        {"this", "", "the members of the object of this call", &DebugConsole::doThis},
        {"list l", "[LINE]", "shows the script around a line", &DebugConsole::doList},
        {"kill k", "", "ends the run", &DebugConsole::doKill},
        {"help h", "", "these words", &DebugConsole::doHelp},
        {"quit q exit", "", "ends the run and the debugger", &DebugConsole::doQuit},
    };
    return all;
}

DebugConsole::DebugConsole(Parts parts) : parts_(std::move(parts)), debug_(parts_.session, *this) {
    debug_.rules() = StopRules::usual();
    std::string_view rest = parts_.text;
    for (;;) {
        const auto end = rest.find('\n');
        lines_.push_back(rest.substr(0, end));
        if (end == std::string_view::npos) break;
        rest.remove_prefix(end + 1);
    }
    if (lines_.back().empty()) lines_.pop_back();
}

bool DebugConsole::run() {
    while (!quit_) {
        if (std::exchange(wantRun_, false)) {
            failed_ = false;
            frame_ = 0;
            const RunOutcome outcome = debug_.start(parts_.engine, parts_.context, parts_.text);
            failed_ = outcome.failed();
            continue;
        }
        const std::optional<std::string> line = parts_.read(kPrompt);
        if (!line) break;
        obey(*line);
    }
    return !failed_;
}

void DebugConsole::obey(const std::string& line) {
    std::string rest = trimmed(line);
    if (rest.empty()) rest = last_;
    if (rest.empty() || rest.front() == '#') return;
    last_ = rest;
    const std::string word = takeWord(rest);
    for (const Command& command : commands())
        if (namesCommand(command.names, word)) return (this->*command.act)(rest);
    say("There is no command \"" + word + "\"; \"help\" lists them.");
}

void DebugConsole::onStopped(const StopInfo& info) {
    frame_ = 0;
    listed_ = 0;
    switch (info.reason) {
        case StopReason::breakpoint:
        case StopReason::functionBreakpoint:
            for (const int id : info.hitIds) say("Breakpoint " + std::to_string(id));
            break;
        case StopReason::dataBreakpoint:
            say("Breakpoint " + std::to_string(info.hitIds.front()) + ": " + info.text + " was " +
                info.before + " and is " + info.now);
            for (std::size_t i = 1; i < info.hitIds.size(); ++i)
                if (const Breakpoint* const other = debug_.breakpoints().find(info.hitIds[i]))
                    say("Breakpoint " + std::to_string(other->id) + ": " + other->wish.name +
                        " is " + other->lastValue);
            break;
        case StopReason::exception:
            say(std::string("Exception, ") + wordsFor(info.exception) + ": " + info.text);
            break;
        case StopReason::timeOut:
        case StopReason::memory:
            say(info.text);
            break;
        case StopReason::pause:
            say("Paused");
            break;
        case StopReason::entry:
        case StopReason::step:
            break;
    }
    sayFrame(0);
    if (debug_.state() != DebugState::held) return;
    goesOn_ = false;
    while (!goesOn_) {
        const std::optional<std::string> line = parts_.read(kPrompt);
        if (!line) {
            doQuit({});
            break;
        }
        obey(*line);
    }
}

void DebugConsole::onOutput(const std::string& text, const ScriptPlace&, int) {
    parts_.write(text);
}

/// Who wants it to stand still is told why it does not.
void DebugConsole::onWait() {
    const std::string function = debug_.waitingIn();
    if (!function.empty()) say("The script waits in " + function + "; it is paused behind it.");
}

/// Those that stand where they were wanted are no news.
void DebugConsole::onBreakpointsChanged(const std::vector<int>& ids) {
    for (const int id : ids) {
        const Breakpoint* const found = debug_.breakpoints().find(id);
        const bool asWanted = found != nullptr && found->verified &&
                              (found->wish.kind != BreakpointKind::line ||
                               found->resolved.line == found->wish.place.line);
        if (!asWanted) sayBreakpoint(id);
    }
}

void DebugConsole::onEnded(const RunFailure& failure) {
    // Who ends a run knows it.
    const bool asked = std::exchange(ends_, false) && failure.kind == RunFailure::Kind::stopped;
    if (asked) return say("The run is ended.");
    parts_.report();
    if (failure.kind == RunFailure::Kind::none) say("The script has ended.");
}

bool DebugConsole::standsStillQuietly() const {
    const DebugState state = debug_.state();
    return state == DebugState::held || state == DebugState::suspended ||
           state == DebugState::ended;
}

bool DebugConsole::standsStill() {
    if (standsStillQuietly()) return true;
    say("The script does not run.");
    return false;
}

bool DebugConsole::goes(bool accepted) {
    if (!accepted)
        say("The script does not run.");
    else
        goesOn_ = true;
    return accepted;
}

std::string DebugConsole::sourceLine(std::int32_t line) const {
    const auto index = static_cast<std::size_t>(line) - 1;
    if (line < 1 || index >= lines_.size()) return {};
    std::string_view text = lines_[index];
    if (text.ends_with('\r')) text.remove_suffix(1);
    return std::string(text);
}

std::string DebugConsole::placeText(const ScriptPlace& place) const {
    return (place.source.empty() ? parts_.name : place.source) + ":" + std::to_string(place.line);
}

void DebugConsole::sayFrame(unsigned index) {
    const Frames& frames = debug_.frames();
    if (index >= frames.count()) return;
    const DebugFrame frame = frames.frame(index);
    const std::string head = "#" + std::to_string(index) + " " + frame.function;
    if (frame.native) return say(head + " of the library");
    say(head + " at " + placeText(frame.place));
    if (frame.place.source.empty())
        say(std::to_string(frame.place.line) + "\t" + sourceLine(frame.place.line));
}

void DebugConsole::sayValue(const std::string& indent, const DebugValue& value) {
    say(indent + value.type + " " + value.name + " = " + value.value +
        (value.changed ? "  (changed)" : ""));
}

void DebugConsole::sayValues(ValueScope which) {
    if (!standsStill()) return;
    const std::vector<DebugValue> values = debug_.values().children(debug_.scope(which, frame_));
    if (values.empty()) say("There are none.");
    for (const DebugValue& value : values) sayValue("", value);
}

void DebugConsole::doLocals(const std::string&) {
    sayValues(ValueScope::locals);
}
void DebugConsole::doGlobals(const std::string&) {
    sayValues(ValueScope::globals);
}
void DebugConsole::doThis(const std::string&) {
    sayValues(ValueScope::thisObject);
}

void DebugConsole::sayBreakpoint(int id) {
    const Breakpoint* const found = debug_.breakpoints().find(id);
    if (found == nullptr) return;
    const BreakpointWish& wish = found->wish;
    std::string text = "Breakpoint " + std::to_string(id);
    if (wish.kind == BreakpointKind::data)
        text += ": changes of " + wish.name;
    else if (found->verified)
        text += " at " + placeText(found->resolved);
    else
        text += " at " + (wish.kind == BreakpointKind::line ? placeText(wish.place) : wish.name);
    if (!found->reason.empty()) text += ": " + found->reason;
    if (!wish.condition.empty()) text += ", if " + wish.condition;
    if (!wish.hitCondition.empty()) text += ", hits " + wish.hitCondition;
    if (!wish.logText.empty()) text += ", log " + wish.logText;
    if (!wish.enabled) text += ", disabled";
    if (found->hits > 0) text += ", hit " + std::to_string(found->hits) + " times";
    say(text);
}

void DebugConsole::addBreakpoint(BreakpointWish wish) {
    const int id = debug_.breakpoints().add(std::move(wish));
    debug_.apply();
    sayBreakpoint(id);
}

void DebugConsole::doBreak(const std::string& rest) {
    BreakpointWish wish;
    std::string where;
    takeCondition(rest, where, wish.condition);
    if (where.empty()) {
        if (!standsStill()) return;
        wish.place = debug_.frames().frame(frame_).place;
        wish.place.column = 0;
    } else if (const std::optional<int> line = numberIn(where)) {
        wish.place.line = *line;
    } else if (const auto colon = where.rfind(':');
               colon != std::string::npos && numberIn(where.substr(colon + 1))) {
        wish.place.line = *numberIn(where.substr(colon + 1));
        const std::string source = where.substr(0, colon);
        if (source != parts_.name) wish.place.source = source;
    } else {
        wish.kind = BreakpointKind::function;
        wish.name = where;
    }
    addBreakpoint(std::move(wish));
}

void DebugConsole::doWatch(const std::string& rest) {
    BreakpointWish wish;
    wish.kind = BreakpointKind::data;
    takeCondition(rest, wish.name, wish.condition);
    if (wish.name.empty()) return say("Which expression?");
    if (frame_ > 0 && standsStillQuietly()) wish.calls = debug_.callsOf(frame_);
    addBreakpoint(std::move(wish));
}

void DebugConsole::doCatch(const std::string& rest) {
    StopRules& rules = debug_.rules();
    if (rest != "never" && rest != "unhandled" && rest != "all" && rest != "lost")
        return say("Which exceptions: never, unhandled, all or lost?");
    rules.unhandled.enabled = rest == "unhandled" || rest == "all";
    rules.all.enabled = rest == "all";
    rules.lost.enabled = rest == "lost";
    say("Exceptions that stop: " + rest);
}

/// The breakpoint that `rest` begins with the number of.
Breakpoint* DebugConsole::numbered(std::string& rest) {
    const std::optional<int> number = numberIn(takeWord(rest));
    Breakpoint* const found = number ? debug_.breakpoints().find(*number) : nullptr;
    if (found == nullptr) say("Which breakpoint? \"info\" lists them.");
    return found;
}

void DebugConsole::doCondition(const std::string& rest) {
    std::string text = rest;
    if (Breakpoint* const found = numbered(text)) {
        BreakpointWish wish = found->wish;
        wish.condition = text;
        debug_.breakpoints().change(found->id, wish);
        sayBreakpoint(found->id);
    }
}

void DebugConsole::doHits(const std::string& rest) {
    std::string text = rest;
    if (Breakpoint* const found = numbered(text)) {
        BreakpointWish wish = found->wish;
        wish.hitCondition = text;
        debug_.breakpoints().change(found->id, wish);
        sayBreakpoint(found->id);
    }
}

void DebugConsole::doLog(const std::string& rest) {
    std::string text = rest;
    if (Breakpoint* const found = numbered(text)) {
        BreakpointWish wish = found->wish;
        wish.logText = text;
        debug_.breakpoints().change(found->id, wish);
        sayBreakpoint(found->id);
    }
}

void DebugConsole::doEnable(const std::string& rest) {
    std::string text = rest;
    if (Breakpoint* const found = numbered(text)) {
        found->wish.enabled = true;
        debug_.apply();
        sayBreakpoint(found->id);
    }
}

void DebugConsole::doDisable(const std::string& rest) {
    std::string text = rest;
    if (Breakpoint* const found = numbered(text)) {
        found->wish.enabled = false;
        found->hasLastValue = false;
        debug_.apply();
        sayBreakpoint(found->id);
    }
}

void DebugConsole::doDelete(const std::string& rest) {
    std::string text = rest;
    if (rest.empty()) {
        debug_.breakpoints().clear();
        say("All breakpoints are removed.");
    } else if (Breakpoint* const found = numbered(text)) {
        const int id = found->id;
        debug_.breakpoints().remove(id);
        say("Breakpoint " + std::to_string(id) + " is removed.");
    }
    debug_.apply();
}

void DebugConsole::doInfo(const std::string& rest) {
    const auto begins = [&rest](std::string_view word) {
        return !rest.empty() && word.starts_with(rest);
    };
    if (begins("locals") || begins("args")) return doLocals({});
    if (begins("globals") || begins("variables")) return doGlobals({});
    if (begins("this")) return doThis({});
    if (begins("frame")) return doFrame({});
    if (begins("stack")) return doWhere({});
    if (!rest.empty() && !begins("breakpoints") && !begins("watchpoints"))
        return say("Info about what? \"help\" lists it.");
    if (debug_.breakpoints().all().empty()) say("There are no breakpoints.");
    for (const Breakpoint& breakpoint : debug_.breakpoints().all()) sayBreakpoint(breakpoint.id);
}

void DebugConsole::doRun(const std::string&) {
    if (debug_.state() == DebugState::held) {
        goes(debug_.restart());
        return;
    }
    wantRun_ = true;
}

void DebugConsole::doContinue(const std::string&) {
    goes(debug_.goOn());
}
void DebugConsole::doStep(const std::string&) {
    goes(debug_.stepInto());
}
void DebugConsole::doNext(const std::string&) {
    goes(debug_.stepOver());
}
void DebugConsole::doFinish(const std::string&) {
    goes(debug_.stepOut(frame_));
}

void DebugConsole::doUntil(const std::string& rest) {
    const std::optional<int> line = numberIn(rest);
    if (!line) return say("To which line?");
    if (!standsStill()) return;
    if (debug_.runTo({{}, *line, 0}))
        goesOn_ = true;
    else
        say("There is no code at or after this line.");
}

void DebugConsole::doWhere(const std::string&) {
    if (!standsStill()) return;
    const Frames& frames = debug_.frames();
    for (unsigned i = 0; i < frames.count(); ++i) {
        const DebugFrame frame = frames.frame(i);
        say((i == frame_ ? "#" : " ") + std::to_string(i) + " " + frame.function +
            (frame.native ? " of the library" : " at " + placeText(frame.place)));
    }
}

void DebugConsole::doFrame(const std::string& rest) {
    if (!standsStill()) return;
    const std::optional<int> wanted = rest.empty() ? static_cast<int>(frame_) : numberIn(rest);
    if (!wanted || *wanted < 0 || static_cast<unsigned>(*wanted) >= debug_.frames().count())
        return say("There is no such call.");
    frame_ = static_cast<unsigned>(*wanted);
    listed_ = 0;
    sayFrame(frame_);
}

void DebugConsole::doUp(const std::string&) {
    doFrame(std::to_string(frame_ + 1));
}

void DebugConsole::doDown(const std::string&) {
    if (frame_ == 0) return say("There is no such call.");
    doFrame(std::to_string(frame_ - 1));
}

namespace {

ValueFormat formatFor(bool hex) {
    ValueFormat format;
    format.hex = hex;
    return format;
}

}  // namespace

void DebugConsole::doPrint(const std::string& rest) {
    if (rest.empty()) return say("Which expression?");
    if (!standsStill()) return;
    const ShownValue shown = debug_.show(frame_, rest, EvaluationPurpose::console);
    if (!shown.error.empty()) return say(shown.error);
    if (shown.isVoid) return say("done");
    say(shown.value.type + " = " + shown.value.value);
}

void DebugConsole::doHex(const std::string& rest) {
    if (rest.empty()) return say("Which expression?");
    if (!standsStill()) return;
    const ShownValue shown = debug_.show(frame_, rest, EvaluationPurpose::console, formatFor(true));
    say(shown.error.empty() ? shown.value.type + " = " + shown.value.value : shown.error);
}

void DebugConsole::doSet(const std::string& rest) {
    if (rest.find('=') == std::string::npos) return say("set NAME = EXPRESSION");
    const std::size_t sign = assignmentIn(rest);
    if (sign == std::string::npos) return doPrint(rest);
    if (!standsStill()) return;
    const ShownValue shown =
        debug_.setExpression(frame_, trimmed(rest.substr(0, sign)), trimmed(rest.substr(sign + 1)));
    if (!shown.error.empty()) return say(shown.error);
    say(shown.isVoid ? "done" : shown.value.type + " = " + shown.value.value);
}

void DebugConsole::doList(const std::string& rest) {
    constexpr std::int32_t kShown = 10;
    const std::optional<int> wanted = numberIn(rest);
    if (!rest.empty() && !wanted) return say("Around which line?");
    const ScriptPlace place =
        standsStillQuietly() ? debug_.frames().frame(frame_).place : ScriptPlace{{}, 1, 0};
    if (!place.source.empty()) return say("The text of " + place.source + " is not at hand.");
    const std::int32_t here = place.line;
    const std::int32_t count = static_cast<std::int32_t>(lines_.size());
    std::int32_t begin = wanted ? *wanted - kShown / 2 : listed_ != 0 ? listed_ : here - kShown / 2;
    begin = std::clamp(begin, 1, std::max(1, count));
    for (std::int32_t line = begin; line < begin + kShown && line <= count; ++line)
        say((line == here && standsStillQuietly() ? ">" : " ") + std::to_string(line) + "\t" +
            sourceLine(line));
    listed_ = begin + kShown <= count ? begin + kShown : 1;
}

void DebugConsole::doKill(const std::string&) {
    const DebugState state = debug_.state();
    if (!goes(state == DebugState::held || state == DebugState::suspended)) return;
    ends_ = true;
    debug_.stopRun();
}

void DebugConsole::doHelp(const std::string&) {
    for (const Command& command : commands()) {
        std::string names = command.names;
        std::replace(names.begin(), names.end(), ' ', ',');
        const std::string head = names + " " + command.arguments;
        const std::size_t width = 42;
        say(head + std::string(head.size() < width ? width - head.size() : 1, ' ') + command.help);
    }
    say("An empty line does the last command again.");
}

void DebugConsole::doQuit(const std::string&) {
    quit_ = true;
    goesOn_ = true;
    const DebugState state = debug_.state();
    ends_ = state == DebugState::held || state == DebugState::suspended;
    if (ends_) debug_.stopRun();
}

}  // namespace korvant
