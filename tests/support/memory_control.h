// An editing control without a screen: what the control documents of texts, lines, markers,
// selection, search, target and undo, kept in memory.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "editor/control/text_control.h"

namespace korvant::test {

/// One message as it was sent, with the text that it carried.
struct SentMessage {
    unsigned message = 0;
    std::intptr_t w = 0;
    std::intptr_t l = 0;
    std::string text;
};

class MemoryControl {
  public:
    MemoryControl();
    MemoryControl(const MemoryControl&) = delete;
    MemoryControl& operator=(const MemoryControl&) = delete;

    ControlSend send();
    /// Called during a message, as a control calls its owner.
    std::function<void(const ControlNotification&)> notify;

    // What a user does.
    void type(std::string_view bytes);  ///< character by character at the caret
    void press(std::string_view bytes) { replaceSelection(bytes); }  ///< at once, like a paste
    void idle();  ///< time passes: the update notification

    // What a user sees.
    std::string text;
    int anchor = 0;
    int caret = 0;
    int firstVisibleLine = 0;
    int linesOnScreen = 10;
    std::string callTip;
    int callTipPosition = -1;
    std::pair<int, int> callTipHighlight{0, 0};
    std::string completions;
    std::pair<int, int> braces{-1, -1};
    std::map<int, int> marginWidths;
    std::map<int, int> markerSymbols;
    std::map<int, std::pair<int, int>> markerColours;  ///< fore and back
    std::vector<int> toggledFolds;
    std::set<int> closedFolds;  ///< of the text that is shown; lines from 0
    int columnOffset = 0;
    int zoom = 0;
    int textWidth = 7;  ///< of one character, in pixels
    /// 1-based lines that have the marker.
    std::vector<int> markedLines(int marker) const;
    int lineCount() const { return static_cast<int>(lineStarts_.size()); }
    std::string selectedText() const;

    // What a test looks at and breaks.
    std::vector<SentMessage> sent;  ///< everything but queries
    std::set<unsigned> unknown;     ///< messages that are not understood
    int insertsUntilFull = -1;      ///< that many inserts later there is no memory; negative: never
    mutable std::size_t longestRead = 0;  ///< most bytes that were asked for in one go
    /// Texts that somebody holds, that in view included.
    std::size_t heldTexts() const { return hidden_.size() + 1; }

  private:
    struct Change {
        bool insert;
        int position;
        std::string text;
        int group;
    };
    /// A text that is not in view, or its references alone while it is.
    struct Hidden {
        std::string text;
        std::vector<int> lineStarts{0};
        std::vector<std::vector<int>> lineMarkers{{}};
        std::vector<Change> undo, redo;
        std::string saved;  ///< what the text was at its save point
        int group = 0;
        bool collecting = true;
        int references = 0;
    };
    using Handler = std::intptr_t (MemoryControl::*)(std::intptr_t w, std::intptr_t l);

    std::intptr_t handle(unsigned message, std::uintptr_t w, std::intptr_t l);
    void record(unsigned message, std::intptr_t w, std::intptr_t l);
    bool query(unsigned message, std::intptr_t& result) const;
    bool queryText(unsigned message, std::intptr_t w, std::intptr_t l, std::intptr_t& result) const;
    bool queryLines(unsigned message, std::intptr_t w, std::intptr_t l,
                    std::intptr_t& result) const;
    bool change(unsigned message, std::intptr_t w, std::intptr_t l, std::intptr_t& result);
    bool move(unsigned message, std::intptr_t w, std::intptr_t l);
    bool searchOrReplace(unsigned message, std::intptr_t w, std::intptr_t l, std::intptr_t& result);
    bool mark(unsigned message, std::intptr_t w, std::intptr_t l, std::intptr_t& result);
    bool show(unsigned message, std::intptr_t w, std::intptr_t l);
    bool exchange(unsigned message, std::intptr_t l, std::intptr_t& result);
    void swapWith(Hidden& hidden);
    void drop(std::intptr_t document);
    static bool ignored(unsigned message);

    void insert(int position, std::string_view bytes, bool undoing = false);
    void erase(int position, int length, bool undoing = false);
    void replaceSelection(std::string_view bytes);
    void modified(bool inserted, int position, int size, int linesAdded);
    void readLines();
    void remember(bool insert, int position, std::string_view bytes);
    void undo();
    void redo();
    void apply(const Change& change, bool inverse);

    int length() const { return static_cast<int>(text.size()); }
    int lineOf(int position) const;
    int startOf(int line) const;
    int endOf(int line) const;
    int wordEdge(int position, int step) const;
    int braceMatch(int position) const;
    std::optional<TextSpan> findText(std::uint32_t flags, int from, int to,
                                     const std::string& what);
    bool wordsAgree(std::uint32_t flags, int start, int end) const;
    std::optional<TextSpan> findExpression(int from, int to, const std::string& expression,
                                           bool matchCase);
    std::string substituted(std::string_view pattern) const;
    std::intptr_t replaceTarget(std::string_view with);

    std::vector<int> lineStarts_{0};
    std::vector<std::vector<int>> lineMarkers_{{}};  ///< a marker may stand several times
    TextSpan target_;
    std::uint32_t searchFlags_ = 0;
    std::vector<std::pair<int, int>> groups_;
    std::vector<Change> undo_;
    std::vector<Change> redo_;
    std::string saved_;
    bool collecting_ = true;
    int group_ = 0;
    int openGroups_ = 0;
    int status_ = 0;
    int modifiedMask_ = 3;
    bool tipShown_ = false;
    bool listShown_ = false;
    bool changed_ = false;
    std::string clipboard_;
    std::map<std::intptr_t, Hidden> hidden_;  ///< all texts but the one in view
    std::intptr_t document_ = 1;              ///< in view
    int references_ = 1;                      ///< to it
    std::intptr_t documents_ = 1;             ///< made so far
};

}  // namespace korvant::test
