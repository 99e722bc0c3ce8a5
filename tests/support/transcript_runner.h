// Debugging sessions as folders: a script, the commands of a user, and what the user then sees.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "editor/script_editor.h"
#include "support/fake_frontend.h"

namespace korvant::test {

/// Looks on what is sent to a control, since a control tells nobody what its tip says.
class ControlWatch {
  public:
    ControlSend watch(ControlSend send);
    std::string takeTip();
    int markerSymbol() const { return markerSymbol_; }

  private:
    std::string tip_;
    int markerSymbol_ = 0;
};

/// What a session is played on: an editor that is open, over any kind of controls.
struct TranscriptStage {
    ScriptEditor& editor;
    TextControl source;
    TextControl output;
    ControlWatch& watch;
    FakeFrontend& frontend;
    /// The texts of the error boxes that the window has shown.
    std::function<std::vector<std::string>()> windowErrors;
    /// From now on the window reports a stop key whenever it is given time.
    std::function<void()> pressStopSoon;
};

/// Commands, one a line; "#" begins a comment:
///
///   F4 F5 F7 F9 F11 F12 stop next previous deleteall remove new
///   breakpoint N            sets or removes the breakpoint of a line
///   condition N TEXT        adds a condition to a line; without TEXT the dialog is cancelled
///   caret N                 puts the caret on a line
///   show WORD               selects WORD on the caret's line or the next that has it, then F4
///   insert N TEXT           a new line before line N
///   delete N                removes line N
///   replace N TEXT          line N becomes TEXT
///   follow N                double-clicks line N of the output pane
///   stopsoon                a stop key from the next time on that the window is given time
///
/// After each command the transcript says what is to be seen: the output pane when it has changed
/// ("..." for what stood there before), boxes, a tip, the marked lines and what they mark, the
/// caret's line, and whether a script is being debugged.
class TranscriptRunner {
  public:
    explicit TranscriptRunner(const TranscriptStage& stage) : stage_(stage) {}
    std::string run(std::string_view commands);

  private:
    void perform(const std::string& line);
    bool performOnLine(const std::string& verb, int number, const std::string& text);
    void report();
    void reportPane();
    void reportBoxes();
    void replaceLines(int from, int to, const std::string& text);
    void show(const std::string& word);
    std::string marks();

    TranscriptStage stage_;
    std::string transcript_;
    std::string lastPane_;
    std::size_t boxesSeen_ = 0;
    std::size_t errorsSeen_ = 0;
};

/// The folders under tests/editor/transcripts, sorted.
std::vector<std::filesystem::path> transcriptFolders(const std::filesystem::path& root);

/// Compares with expected.txt. With KORVANT_UPDATE_TRANSCRIPTS set it is written instead.
void expectTranscript(const std::filesystem::path& folder, const std::string& actual);

}  // namespace korvant::test
