#include "host/terminal/terminal_frontend.h"

#include <optional>
#include <vector>

#include "base/system/clock.h"
#include "base/text/characters.h"
#include "base/text/html_text.h"
#include "base/text/number_text.h"
#include "base/text/plain_text.h"

namespace korvant {

namespace {

std::string shownText(const MessageBoxRequest& request, const std::string& text) {
    return request.plain ? text : plainFromHtml(boundedHtml(text));
}

std::string kindOf(const MessageBoxRequest& request) {
    switch (request.style & 0xF0) {
        case box_style::kIconError:
            return "Error";
        case box_style::kIconWarning:
            return "Warning";
        case box_style::kIconInformation:
            return "Information";
        case box_style::kIconQuestion:
            return "Question";
        default:
            return request.caption.empty() ? kModuleCaption : request.caption;
    }
}

std::string headline(const MessageBoxRequest& request) {
    const std::string kind = kindOf(request);
    const bool ownCaption =
        !request.caption.empty() && request.caption != kModuleCaption && request.caption != kind;
    return kind + (ownCaption ? " (" + request.caption + "): " : ": ") +
           shownText(request, request.text);
}

/// All that the box says: what a window keeps behind a button follows at once.
std::string fullText(const MessageBoxRequest& request) {
    if (request.details.empty()) return headline(request);
    return headline(request) + "\n" + shownText(request, request.details);
}

std::string offered(std::int32_t value) {
    return formatInt(value);
}
std::string offered(float value) {
    return formatShortest(value);
}
std::string offered(double value) {
    return formatShortest(value);
}

/// "[Yes/No; Return: Yes] "
std::string questionFor(const MessageBoxRequest& request, const BoxButtons& buttons) {
    std::string question;
    for (const int id : buttons.ids)
        question += (question.empty() ? "[" : "/") + buttonCaption(request, id);
    if (buttons.ids.size() == 1) return question + "] ";
    return question + "; Return: " + buttonCaption(request, buttons.defaultId) + "] ";
}

/// The button whose caption the answer is, or of which alone it is a beginning; 0 for none.
int buttonNamed(const std::string& answer, const MessageBoxRequest& request,
                const BoxButtons& buttons) {
    int found = 0, matches = 0;
    for (const int id : buttons.ids) {
        const std::string caption = lowerCase(buttonCaption(request, id));
        if (caption == answer) return id;
        if (caption.compare(0, answer.size(), answer) != 0) continue;
        found = id;
        ++matches;
    }
    return matches == 1 ? found : 0;
}

/// A box may choose its default button itself after a while. One box is shown at a time.
class Countdown {
  public:
    Countdown(unsigned seconds, StopQuery shouldStop) : shouldStop_(shouldStop) {
        counting_ = seconds > 0;
        end_ = systemClock().monotonic() + seconds * 1000ull;
        outer_ = shouldStop;
    }
    StopQuery query() const { return counting_ ? over : shouldStop_; }
    bool ranOut() const {
        return counting_ && systemClock().monotonic() >= end_ && !(shouldStop_ && shouldStop_());
    }

  private:
    static bool over() {
        return systemClock().monotonic() >= end_ || (outer_ != nullptr && outer_());
    }
    inline static std::uint64_t end_ = 0;
    inline static StopQuery outer_ = nullptr;
    StopQuery shouldStop_;
    bool counting_ = false;
};

}  // namespace

TerminalFrontend::TerminalFrontend(Options options) : options_(std::move(options)) {}

void TerminalFrontend::sayNobodyIsThere(const std::string& text) {
    attended_ = false;
    if (!options_.notice) return;
    options_.notice(text);
    if (saidSo_) return;
    saidSo_ = true;
    options_.notice("no terminal to ask on: dialogs are answered as if they were closed");
}

bool TerminalFrontend::readLine(std::string& line, StopQuery shouldStop) {
    line.clear();
    for (;;) {
        const int byte = options_.terminal->readChar(shouldStop);
        if (byte == '\n' || (byte < 0 && !line.empty())) return true;
        if (byte < 0) return false;
        line.push_back(static_cast<char>(byte));
    }
}

bool TerminalFrontend::ask(const std::string& question, std::string& answer, StopQuery shouldStop) {
    options_.terminal->dropTyped();
    options_.terminal->write(question);
    const bool answered = readLine(answer, shouldStop);
    attended_ = options_.terminal->takeWaited() || answered;
    if (!answered) options_.terminal->write("\n");
    options_.terminal->flush();
    return answered;
}

int TerminalFrontend::messageBox(const MessageBoxRequest& request) {
    if (request.runReport && options_.omitRunReports) return 0;
    const BoxButtons buttons = boxButtons(request.style, request.offerStop);
    if (!options_.terminal) {
        sayNobodyIsThere(fullText(request));
        return buttons.closeId;
    }
    options_.terminal->write(fullText(request) + "\n");
    return askForButton(request, buttons);
}

int TerminalFrontend::askForButton(const MessageBoxRequest& request, const BoxButtons& buttons) {
    const Countdown countdown(request.countdownSeconds, options_.shouldStop);
    std::string answer;
    while (ask(questionFor(request, buttons), answer, countdown.query())) {
        answer = lowerCase(trimmed(answer, kLineBlanks));
        const int chosen =
            answer.empty() ? buttons.defaultId : buttonNamed(answer, request, buttons);
        if (chosen != 0) return chosen;
    }
    return countdown.ranOut() ? buttons.defaultId : buttons.closeId;
}

template <class Value, class Parse>
Value TerminalFrontend::promptNumber(const std::string& label, Value initial, const char* wanted,
                                     Parse parse) {
    if (!options_.terminal) {
        sayNobodyIsThere("Prompt: " + label);
        return initial;
    }
    const std::string question = label + " [" + offered(initial) + "]: ";
    for (std::string answer; ask(question, answer, options_.shouldStop);) {
        answer = trimmed(answer, kLineBlanks);
        if (answer.empty()) return initial;
        if (const auto value = parse(answer)) return static_cast<Value>(*value);
        options_.terminal->write(wanted);
    }
    return initial;
}

std::int32_t TerminalFrontend::promptInt(const std::string& label, std::int32_t initial) {
    return promptNumber(label, initial, "Please enter an integer.\n", parseInt);
}

float TerminalFrontend::promptFloat(const std::string& label, float initial) {
    return promptNumber(label, initial, "Please enter a number.\n", parseNumber);
}

double TerminalFrontend::promptDouble(const std::string& label, double initial) {
    return promptNumber(label, initial, "Please enter a number.\n", parseNumber);
}

std::string TerminalFrontend::promptString(const std::string& label, const std::string& initial) {
    if (!options_.terminal) {
        sayNobodyIsThere("Prompt: " + label);
        return initial;
    }
    std::string answer;
    const std::string question = label + (initial.empty() ? ": " : " [" + initial + "]: ");
    if (!ask(question, answer, options_.shouldStop) || answer.empty()) return initial;
    return answer;
}

std::unique_ptr<ProgressWindow> TerminalFrontend::makeProgressWindow() {
    return options_.makeProgress ? options_.makeProgress() : nullptr;
}

}  // namespace korvant
