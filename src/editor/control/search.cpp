#include "editor/control/search.h"

#include <algorithm>
#include <limits>

namespace korvant {

bool TextHistory::add(const std::string& text) {
    if (std::find(texts_.begin(), texts_.end(), text) != texts_.end()) return false;
    if (texts_.size() >= kMost) texts_.erase(texts_.begin());
    texts_.push_back(text);
    return true;
}

bool Search::findNext(const std::string& text) {
    lastText_ = text;
    return selectMatch(editor_.find(flags_, editor_.caret() + 1, editor_.length(), text));
}

bool Search::findPrevious(const std::string& text) {
    lastText_ = text;
    return selectMatch(editor_.find(flags_, editor_.selectionStart() - 1, 0, text));
}

bool Search::selectMatch(std::optional<TextSpan> match) {
    matched_.reset();
    if (!match) return false;
    window_.activate();
    window_.focusEditor();
    editor_.gotoPosition(match->start);
    editor_.select(match->start, match->end);
    if (regularExpressions()) matched_ = match;
    matchedLength_ = editor_.length();
    return true;
}

/// The control would fill in groups of a search that has nothing to do with what is replaced. An
/// expression that matches nothing at all leaves every group empty.
void Search::forgetGroups() {
    editor_.find(sci::kFindRegExp, 0, 0, "^");
}

bool Search::replaceSelection(const std::string& replacement) {
    const TextSpan selection{editor_.selectionStart(), editor_.selectionEnd()};
    if (selection.empty()) return false;
    const bool current = matched_ == selection && matchedLength_ == editor_.length();
    if (regularExpressions() && !current) forgetGroups();
    editor_.send(sci::kTargetFromSelection);
    editor_.replaceTarget(replacement, regularExpressions());
    matched_.reset();
    return true;
}

void Search::replaceAll(const std::string& text, const std::string& replacement, bool inSelection) {
    if (text.empty()) return;
    if (regularExpressions()) forgetGroups();
    const UndoStep step(editor_);
    // Deliberate: the control's own flags stay, so the plain text in any case is replaced.
    TextSpan range{0, editor_.length()};
    if (inSelection) range = {editor_.selectionStart(), editor_.selectionEnd()};
    while (!range.empty()) {
        editor_.setTarget(range);
        const std::optional<int> hit = editor_.searchInTarget(text);
        if (!hit || *hit >= range.end) break;
        const int length = editor_.replaceTarget(replacement, regularExpressions());
        range.start = *hit + length;
        range.end = inSelection ? editor_.selectionEnd() : editor_.length();
    }
}

std::optional<std::string> Search::textToStartWith() const {
    const std::string text = editor_.selectedText(kLongestText);
    if (text.find_first_of("\r\n") != std::string::npos) return std::nullopt;
    return text;
}

void Search::gotoLine(std::int32_t number) {
    const std::int32_t least = std::numeric_limits<std::int32_t>::min();
    editor_.gotoLine({number == least ? least : number - 1});
}

}  // namespace korvant
