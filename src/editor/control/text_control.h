// One editing control behind one send callable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "editor/control/control_messages.h"
#include "editor/control/line_number.h"

namespace korvant {

/// Sends one message to a control and returns its answer. Empty while there is no control.
using ControlSend =
    std::function<std::intptr_t(unsigned message, std::uintptr_t w, std::intptr_t l)>;

/// What a control tells its owner. Source: SCNotification, the fields that the editor reads.
struct ControlNotification {
    unsigned code = 0;
    int position = 0;
    int length = 0;  ///< of what was inserted or deleted
    int character = 0;
    int modificationType = 0;
    int linesAdded = 0;
    int margin = 0;
};

/// A control's text in ranges of bytes; the control's text is UTF-8.
struct TextSpan {
    int start = 0;
    int end = 0;
    bool empty() const noexcept { return start >= end; }
    friend bool operator==(const TextSpan&, const TextSpan&) = default;
};

/// Typed calls over the send callable. Without a control every call does nothing and answers 0,
/// an empty text or nothing.
class TextControl {
  public:
    TextControl() = default;
    explicit TextControl(ControlSend send) : send_(std::move(send)) {}

    bool exists() const noexcept { return static_cast<bool>(send_); }
    std::intptr_t send(unsigned message, std::uintptr_t w = 0, std::intptr_t l = 0) const;
    std::intptr_t send(unsigned message, std::uintptr_t w, const char* text) const;

    int length() const { return answer(sci::kGetLength); }
    /// The whole text, zero bytes included; nothing when there is no memory for it.
    std::optional<std::string> text() const;
    std::string textOf(TextSpan span) const;
    /// Replaces the whole text by its length, so zero bytes are kept; the caret goes to 0. False
    /// when the control ran out of memory: it then holds an incomplete text.
    bool replaceText(std::string_view text) const;
    void setText(const std::string& text) const { send(sci::kSetText, 0, text.c_str()); }
    /// False when a message since the last call failed, out of memory most likely.
    bool takeStatus() const;

    int caret() const { return answer(sci::kGetCurrentPos); }
    int selectionStart() const { return answer(sci::kGetSelectionStart); }
    int selectionEnd() const { return answer(sci::kGetSelectionEnd); }
    /// The selected text; only its first `limit` bytes when it is longer.
    std::string selectedText(std::size_t limit) const;
    void select(int anchor, int caretPosition) const;
    void gotoPosition(int position) const { send(sci::kGotoPos, word(position)); }
    void gotoLine(ControlLine line) const { send(sci::kGotoLine, word(line.index)); }

    int lineCount() const { return answer(sci::kGetLineCount); }
    ControlLine lineOf(int position) const;
    int lineStart(ControlLine line) const { return answer(sci::kPositionFromLine, line.index); }
    int lineEnd(ControlLine line) const { return answer(sci::kGetLineEndPosition, line.index); }
    ControlLine caretLine() const { return lineOf(caret()); }
    void scrollLines(int lines) const { send(sci::kLineScroll, 0, lines); }
    /// The word around a position, empty where there is none.
    TextSpan wordAt(int position) const;

    void addMarker(ControlLine line, int marker) const;
    void deleteMarker(ControlLine line, int marker) const;
    void deleteAllMarkers(int marker) const { send(sci::kMarkerDeleteAll, word(marker)); }
    bool hasMarker(ControlLine line, int marker) const;
    /// First line from `from` on (or up from it) that has one of the markers in `mask`.
    std::optional<ControlLine> nextMarker(std::int32_t from, int mask) const;
    std::optional<ControlLine> previousMarker(std::int32_t from, int mask) const;

    /// `to` below `from` searches backward. Positions outside the text are moved into it.
    std::optional<TextSpan> find(std::uint32_t flags, int from, int to,
                                 const std::string& text) const;
    void setTarget(TextSpan span) const;
    TextSpan target() const;
    std::optional<int> searchInTarget(std::string_view text) const;
    /// Length of what now stands in the target's place.
    int replaceTarget(std::string_view text, bool regularExpression) const;

    void showTip(int position, const std::string& text) const;
    void cancelTip() const { send(sci::kCallTipCancel); }
    bool tipActive() const { return answer(sci::kCallTipActive) != 0; }

  private:
    int answer(unsigned message, std::intptr_t w = 0, std::intptr_t l = 0) const;
    static std::uintptr_t word(std::intptr_t value) { return static_cast<std::uintptr_t>(value); }

    ControlSend send_;
};

/// What is done to a control while one lives is one step of undo.
class UndoStep {
  public:
    explicit UndoStep(const TextControl& control) : control_(control) {
        control_.send(sci::kBeginUndoAction);
    }
    ~UndoStep() { control_.send(sci::kEndUndoAction); }
    UndoStep(const UndoStep&) = delete;
    UndoStep& operator=(const UndoStep&) = delete;

  private:
    const TextControl& control_;
};

}  // namespace korvant
