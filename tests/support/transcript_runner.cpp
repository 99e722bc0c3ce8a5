#include "support/transcript_runner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>

#include "support/temporary_folder.h"

namespace korvant::test {

namespace {

const std::map<std::string, int> kCommands = {{"stop", command_id::kStop},
                                              {"next", command_id::kNextBreakpoint},
                                              {"previous", command_id::kPreviousBreakpoint},
                                              {"deleteall", command_id::kDeleteBreakpoints},
                                              {"remove", command_id::kRemoveBreakpoint},
                                              {"new", command_id::kNew}};

std::string indented(const std::string& text, const std::string& prefix) {
    std::string result;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) result += prefix + line + "\n";
    return result;
}

}  // namespace

ControlSend ControlWatch::watch(ControlSend send) {
    return [this, send](unsigned message, std::uintptr_t w, std::intptr_t l) {
        if (message == sci::kCallTipShow) tip_ = reinterpret_cast<const char*>(l);
        if (message == sci::kMarkerDefine && w == 0) markerSymbol_ = static_cast<int>(l);
        return send(message, w, l);
    };
}

std::string ControlWatch::takeTip() {
    return std::exchange(tip_, std::string());
}

std::string TranscriptRunner::run(std::string_view commands) {
    std::istringstream lines{std::string(commands)};
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line[0] == '#') continue;
        transcript_ += "> " + line + "\n";
        perform(line);
        report();
    }
    return transcript_;
}

void TranscriptRunner::perform(const std::string& line) {
    std::istringstream words(line);
    std::string verb;
    words >> verb;
    if (verb.size() > 1 && verb[0] == 'F' && std::isdigit(static_cast<unsigned char>(verb[1])))
        return stage_.editor.functionKey(std::stoi(verb.substr(1)));
    if (kCommands.count(verb)) return stage_.editor.command(kCommands.at(verb));
    if (verb == "stopsoon") return stage_.pressStopSoon();
    std::string rest;
    if (verb == "show") {
        words >> rest;
        return show(rest);
    }
    int number = 0;
    words >> number;
    std::getline(words >> std::ws, rest);
    if (!performOnLine(verb, number, rest)) ADD_FAILURE() << "no such command: " << line;
}

bool TranscriptRunner::performOnLine(const std::string& verb, int number, const std::string& text) {
    const ControlLine line{number - 1};
    if (verb == "insert") {
        replaceLines(number, number, text + "\n");
    } else if (verb == "delete") {
        replaceLines(number, number + 1, "");
    } else if (verb == "replace") {
        replaceLines(number, number + 1, text + "\n");
    } else if (verb == "follow") {
        ControlNotification notification;
        notification.code = sci::kDoubleClick;
        notification.position = stage_.output.lineStart(line);
        stage_.editor.outputNotified(notification);
    } else if (verb == "caret" || verb == "breakpoint" || verb == "condition") {
        stage_.source.gotoLine(line);
        stage_.frontend.text = text.empty() ? std::nullopt : std::optional(text);
        if (verb == "breakpoint") stage_.editor.command(command_id::kToggleBreakpoint);
        if (verb == "condition") stage_.editor.command(command_id::kAddCondition);
    } else {
        return false;
    }
    return true;
}

void TranscriptRunner::replaceLines(int from, int to, const std::string& text) {
    stage_.source.setTarget(
        {stage_.source.lineStart({from - 1}), stage_.source.lineStart({to - 1})});
    stage_.source.replaceTarget(text, false);
}

void TranscriptRunner::show(const std::string& word) {
    const int from = stage_.source.lineStart(stage_.source.caretLine());
    const auto found = stage_.source.find(sci::kFindWholeWord | sci::kFindMatchCase, from,
                                          stage_.source.length(), word);
    if (!found) return static_cast<void>(ADD_FAILURE() << "not below the caret: " << word);
    stage_.source.select(found->start, found->end);
    stage_.editor.functionKey(4);
}

void TranscriptRunner::reportPane() {
    std::string pane = stage_.output.text().value_or("");
    if (pane == lastPane_) return;
    if (pane.empty())
        transcript_ += "(empty)\n";
    else if (!lastPane_.empty() && pane.ends_with(lastPane_))
        transcript_ += indented(pane.substr(0, pane.size() - lastPane_.size()) + "...", "| ");
    else
        transcript_ += indented(pane, "| ");
    lastPane_ = std::move(pane);
}

void TranscriptRunner::reportBoxes() {
    for (; boxesSeen_ < stage_.frontend.boxes.size(); ++boxesSeen_)
        transcript_ += indented(stage_.frontend.boxes[boxesSeen_].text, "! ");
    const std::vector<std::string> errors = stage_.windowErrors();
    for (; errorsSeen_ < errors.size(); ++errorsSeen_)
        transcript_ += indented(errors[errorsSeen_], "! ");
}

void TranscriptRunner::report() {
    reportPane();
    reportBoxes();
    const std::string tip = stage_.watch.takeTip();
    if (!tip.empty()) transcript_ += indented(tip, "tip: ");
    transcript_ += "line " + std::to_string(stage_.source.caretLine().index + 1) + marks() +
                   (stage_.editor.debugging() ? ", debugging" : "") + "\n";
}

std::string TranscriptRunner::marks() {
    std::string lines;
    for (auto line = stage_.source.nextMarker(0, 1); line;
         line = stage_.source.nextMarker(line->index + 1, 1))
        lines += " " + std::to_string(line->index + 1);
    if (lines.empty()) return "";
    const int symbol = stage_.watch.markerSymbol();
    const char* what = symbol == sci::kMarkArrow        ? ", current"
                       : symbol == sci::kMarkShortArrow ? ", errors"
                                                        : ", breakpoints";
    return what + lines;
}

std::vector<std::filesystem::path> transcriptFolders(const std::filesystem::path& root) {
    std::vector<std::filesystem::path> folders;
    for (const auto& entry : std::filesystem::directory_iterator(root))
        if (entry.is_directory()) folders.push_back(entry.path());
    std::sort(folders.begin(), folders.end());
    return folders;
}

void expectTranscript(const std::filesystem::path& folder, const std::string& actual) {
    const std::filesystem::path file = folder / "expected.txt";
    if (std::getenv("KORVANT_UPDATE_TRANSCRIPTS") != nullptr) writeFile(file, actual);
    EXPECT_EQ(readFile(file), actual) << folder;
}

}  // namespace korvant::test
