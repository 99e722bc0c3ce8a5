#include "editor/assist/assistant.h"

#include <algorithm>

#include "base/text/characters.h"
#include "language/tokens.h"

namespace korvant {

namespace {

/// What is looked at on either side of the caret; larger scripts stay quick to type in.
constexpr int kHalfWindow = 256 << 10;
constexpr std::size_t kShownFrom = 3;  // letters
constexpr int kFirstCommentStyle = 1, kLastCommentStyle = 3;
constexpr int kArrowUp = 1;

}  // namespace

void Assistant::setEngine(asIScriptEngine* engine) {
    engine_ = engine;
    general_.clear();
}

Assistant::Window Assistant::windowAround(int caret) const {
    const int begin = editor_.lineStart(editor_.lineOf(std::max(caret - kHalfWindow, 0)));
    return {editor_.textOf({begin, std::min(caret + kHalfWindow, editor_.length())}), begin};
}

std::string_view Assistant::beforeCaret(const Window& window, int caret) const {
    return std::string_view(window.text).substr(0, static_cast<std::size_t>(caret - window.begin));
}

SymbolTable Assistant::table(int caret) {
    if (general_.empty()) {
        general_ = engineSymbols(engine_, families_);
        general_.insert(general_.end(), languageWords().begin(), languageWords().end());
    }
    if (!current_) {
        const Window window = windowAround(caret);
        inScript_ = scriptSymbols(window.text, window.begin);
        current_ = true;
    }
    return {general_, inScript_, caret};
}

bool Assistant::beginsInComment(const Window& window) const {
    if (window.begin == 0) return false;
    const auto style = editor_.send(sci::kGetStyleAt, static_cast<std::uintptr_t>(window.begin));
    return style >= kFirstCommentStyle && style <= kLastCommentStyle;
}

void Assistant::complete() {
    const int caret = editor_.caret();
    const Window window = windowAround(caret);
    showNames(wordBefore(beforeCaret(window, caret), beginsInComment(window)));
}

void Assistant::showNames(const WordBefore& before) {
    const std::vector<std::string> names = table(editor_.caret()).completions(before);
    if (names.empty() || (names.size() == 1 && names.front() == before.word)) {
        editor_.send(sci::kAutoCCancel);
        return;
    }
    std::string list;
    for (const std::string& name : names) list += (list.empty() ? "" : " ") + name;
    editor_.send(sci::kAutoCShow, before.word.size(), list.c_str());
}

void Assistant::characterAdded(int character) {
    if (character == '(' || character == ',' || character == ')') return updateCallTip();
    if (editor_.send(sci::kAutoCActive) != 0) return;
    if (character == '.') return complete();
    if (character > 127 || !isWordByte(static_cast<char>(character))) return;
    const int caret = editor_.caret();
    const TextSpan word{static_cast<int>(editor_.send(sci::kWordStartPosition,
                                                      static_cast<std::uintptr_t>(caret), 1)),
                        caret};
    const std::string text = editor_.textOf(word);
    const bool name = !text.empty() && (text[0] < '0' || text[0] > '9');
    if (name && text.size() == kShownFrom) complete();
}

void Assistant::updateCallTip() {
    const int caret = editor_.caret();
    const Window window = windowAround(caret);
    const CallBefore call = callBefore(beforeCaret(window, caret), beginsInComment(window));
    overloads_.clear();
    if (call.bracket >= 0) overloads_ = table(caret).overloads(call.function);
    if (overloads_.empty()) {
        if (tipBracket_ >= 0) editor_.cancelTip();
        tipBracket_ = -1;
        return;
    }
    if (window.begin + call.bracket != tipBracket_) overload_ = 0;
    const bool shown = tipBracket_ == window.begin + call.bracket && editor_.tipActive();
    const bool sameArgument = shown && argument_ == call.argument;
    tipBracket_ = window.begin + call.bracket;
    argument_ = call.argument;
    tipCaret_ = caret;
    if (!sameArgument) showOverload();
}

void Assistant::caretMoved() {
    if (tipBracket_ < 0 || editor_.caret() == tipCaret_) return;
    if (editor_.tipActive() && !hovering_)
        updateCallTip();
    else
        tipBracket_ = -1;
}

void Assistant::showOverload() {
    overload_ %= overloads_.size();
    std::string arrows;
    if (overloads_.size() > 1)
        arrows = "\001 " + std::to_string(overload_ + 1) + " of " +
                 std::to_string(overloads_.size()) + " \002 ";
    const Symbol& function = overloads_[overload_];
    editor_.showTip(tipBracket_, arrows + function.declaration +
                                     (function.help.empty() ? "" : "\n" + function.help));
    const ParameterPlace place = parameterPlace(function.declaration, argument_);
    const int shift = static_cast<int>(arrows.size());
    if (place.end > place.begin)
        editor_.send(sci::kCallTipSetHlt, static_cast<std::uintptr_t>(place.begin + shift),
                     place.end + shift);
}

void Assistant::tipClicked(int arrow) {
    if (overloads_.size() < 2 || arrow == 0) return;
    overload_ += arrow == kArrowUp ? overloads_.size() - 1 : 1;
    showOverload();
}

void Assistant::restedAt(int position) {
    if (position < 0 || !debugger_.debugging() || editor_.tipActive()) return;
    const TextSpan word = editor_.wordAt(position);
    if (word.empty()) return;
    const std::string text = debugger_.variableText(editor_.textOf(word));
    if (text.empty()) return;
    hovering_ = true;
    editor_.showTip(word.start, text);
}

void Assistant::movedOn() {
    if (hovering_) editor_.cancelTip();
    hovering_ = false;
}

}  // namespace korvant
