#include "source_report.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <regex>
#include <string_view>

#include "base/system/os_file.h"
#include "base/text/character_width.h"
#include "base/text/display_text.h"
#include "base/text/text_encoding.h"
#include "host/run/message_line.h"

namespace korvant_app {

namespace {

using korvant::BuildMessage;

/// What is shown of a long line, around the place in question.
constexpr std::size_t kShownBytes = 120;

/// Bytes as they stand for a file; decoded and tamed for a terminal.
std::string forStandardError(const std::string& text) {
    if (!korvant::isTerminal(STDERR_FILENO)) return text;
    korvant::DisplayText display;
    std::string shown;
    display.append(text, shown);
    display.finish(shown);
    return shown;
}

void say(const std::string& text) {
    std::fputs(forStandardError(text).c_str(), stderr);
}

/// Line `row` (from 1) without its end; empty for none.
std::string_view lineOf(std::string_view text, std::int32_t row) {
    for (; row > 1; --row) {
        const auto end = text.find('\n');
        if (end == std::string_view::npos) return {};
        text.remove_prefix(end + 1);
    }
    text = text.substr(0, text.find('\n'));
    return text.substr(0, text.find('\r'));
}

/// As wide as `before` is on the screen: tabs stay, wide characters count twice.
std::string padding(std::string_view before) {
    std::string blanks;
    while (!before.empty()) {
        const auto length =
            static_cast<std::size_t>(std::max(1, korvant::utf8SequenceLength(before)));
        if (before.front() == '\t')
            blanks.push_back('\t');
        else
            blanks.append(korvant::characterWidth(before.substr(0, length)), ' ');
        before.remove_prefix(length);
    }
    return blanks;
}

/// The line, or the part of it around `column`, and a caret below the column.
std::string excerpt(std::string_view line, std::int32_t column) {
    if (line.empty()) return {};
    const std::size_t place =
        std::min(static_cast<std::size_t>(std::max(column, 1)) - 1, line.size());
    const std::size_t begin = place < kShownBytes ? 0 : place - kShownBytes / 2;
    const std::string_view part = line.substr(begin, kShownBytes);
    const std::string head = begin > 0 ? "..." : "";
    const std::string tail = begin + part.size() < line.size() ? "..." : "";
    const std::string shown = "    " + head + std::string(part) + tail + "\n";
    if (column < 1) return shown;
    return shown + "    " + std::string(head.size(), ' ') + padding(part.substr(0, place - begin)) +
           "^\n";
}

std::string_view withoutLineEnd(std::string_view text) {
    while (!text.empty() && text.back() == '\n') text.remove_suffix(1);
    return text;
}

}  // namespace

void reportBuild(const Source& source, const korvant::BuildMessages& messages) {
    for (const BuildMessage& message : messages.all()) {
        say(korvant::messageLine(source.name, message) + "\n");
        if (message.kind != BuildMessage::Kind::information)
            say(excerpt(lineOf(source.text, message.row), message.column));
    }
    if (messages.count() == korvant::BuildMessages::kCapacity)
        complain("there may be more messages than these");
}

namespace {

constexpr std::size_t kShownCalls = 20;

/// "called from FILE:LINE in FUNCTION" for each call that had not returned.
void reportCalls(const Source& source, const korvant::RunFailure& failure) {
    const std::size_t shown = std::min(failure.stack.size(), kShownCalls);
    for (std::size_t i = 1; i < shown; ++i) {
        const korvant::RunFrame& frame = failure.stack[i];
        const std::string& file = frame.source.empty() ? source.name : frame.source;
        const std::string place =
            frame.line > 0 ? file + ":" + std::to_string(frame.line) + " in " : "the library's ";
        say("called from " + place + frame.function + "\n");
    }
    if (failure.calls > shown)
        say("and " + std::to_string(failure.calls - shown) + " more calls\n");
}

/// Looks at the text alone: a hint may be given once too often.
bool declaresVoidMain(const std::string& text) {
    static const std::regex form(R"(\bvoid[ \t]+main[ \t]*\()");
    return std::regex_search(text, form);
}

}  // namespace

void reportRun(const Source& source, const korvant::RunFailure& failure) {
    using Kind = korvant::RunFailure::Kind;
    if (failure.kind == Kind::none || failure.kind == Kind::build) return;
    if (failure.kind == Kind::stopped) say("The Script is stopped.\n");
    say(std::string(withoutLineEnd(failure.text)) + "\n");
    if (failure.kind == Kind::noMain && declaresVoidMain(source.text))
        complain("main returns a number: write 'int main()' instead of 'void main()'");
    if (failure.line < 1) return;
    say(source.name + ":" + std::to_string(failure.line) + "\n");
    say(excerpt(lineOf(source.text, failure.line), 0));
    reportCalls(source, failure);
}

void reportUnwritten(const korvant::RunFailure& failure) {
    // Whoever closed the other end of a pipe has what they wanted.
    const std::string gone = "could not write standard output: " + korvant::systemErrorText(EPIPE);
    for (const std::string& line : failure.unwritten)
        if (line != gone) complain(line);
}

void reportAnswer(const Source& source, const std::string& what, int line) {
    complain(what);
    if (line < 1) return;
    say(source.name + ":" + std::to_string(line) + "\n");
    say(excerpt(lineOf(source.text, line), 0));
}

void complain(const std::string& text) {
    say("korvant: " + text + "\n");
}

namespace {

int outputError = 0;

void noteOutput(bool written) {
    if (!written && outputError == 0) outputError = errno != 0 ? errno : EIO;
}

}  // namespace

bool writeOutput(std::string_view text) {
    errno = 0;
    noteOutput(std::fwrite(text.data(), 1, text.size(), stdout) == text.size());
    return outputError == 0;
}

int finishOutput() {
    errno = 0;
    noteOutput(std::fflush(stdout) == 0);
    return outputError;
}

void complainOfOutput(int systemError) {
    if (systemError == EPIPE) return;
    complain("could not write standard output" +
             (systemError != 0 ? ": " + korvant::systemErrorText(systemError) : std::string()));
}

}  // namespace korvant_app
