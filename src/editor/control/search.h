// Finding and replacing in the editor control.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "editor/control/editor_window.h"
#include "editor/control/text_control.h"

namespace korvant {

/// Texts that were searched for or put in, each once, compared exactly. The oldest go first.
class TextHistory {
  public:
    static constexpr std::size_t kMost = 100;

    /// True when the text was not in it.
    bool add(const std::string& text);
    bool empty() const noexcept { return texts_.empty(); }
    const std::vector<std::string>& oldestFirst() const noexcept { return texts_; }
    std::vector<std::string> newestFirst() const { return {texts_.rbegin(), texts_.rend()}; }

  private:
    std::vector<std::string> texts_;
};

class Search {
  public:
    /// Longer selections are cut when they become a search text.
    static constexpr std::size_t kLongestText = std::size_t{64} << 10;

    Search(const TextControl& editor, EditorWindow& window) : editor_(editor), window_(window) {}

    /// The control's own flags; they stay for the next search.
    void setFlags(std::uint32_t flags) noexcept { flags_ = flags; }
    std::uint32_t flags() const noexcept { return flags_; }

    /// Selects the next match behind the caret, or the one before the selection, without starting
    /// again at the other end. False, and nothing changes, when there is none.
    bool findNext(const std::string& text);
    bool findPrevious(const std::string& text);
    /// What was searched for last; empty at first.
    const std::string& lastText() const noexcept { return lastText_; }

    /// Replaces the selection. False when nothing is selected.
    bool replaceSelection(const std::string& replacement);
    /// Replaces every match in the text, or in the selection, as one step of undo; an empty text
    /// replaces nothing. Deliberate: finds plain text in any case whatever the flags say, which
    /// only decide how `replacement` is read.
    void replaceAll(const std::string& text, const std::string& replacement, bool inSelection);

    /// The selected text where it lies on one line.
    std::optional<std::string> textToStartWith() const;

    TextSpan selection() const { return {editor_.selectionStart(), editor_.selectionEnd()}; }
    void moveTo(int position) { editor_.gotoPosition(position); }
    /// `number` is 1-based; the control moves numbers outside the text into it.
    void gotoLine(std::int32_t number);

    TextHistory searched;
    TextHistory replacements;

  private:
    bool selectMatch(std::optional<TextSpan> match);
    bool regularExpressions() const noexcept { return (flags_ & sci::kFindRegExp) != 0; }
    void forgetGroups();

    const TextControl& editor_;
    EditorWindow& window_;
    std::uint32_t flags_ = 0;
    std::string lastText_;
    /// The selection that the last regular expression matched; its groups are the control's.
    std::optional<TextSpan> matched_;
    int matchedLength_ = 0;
};

}  // namespace korvant
