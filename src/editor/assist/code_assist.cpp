#include "editor/assist/code_assist.h"

#include <algorithm>
#include <utility>

#include "editor/assist/hover_expression.h"
#include "editor/control/live_help.h"
#include "language/expression_before.h"
#include "language/script_shape.h"
#include "language/tokens.h"

namespace korvant {

namespace {

constexpr std::size_t kShownFrom = 3;  // letters
constexpr int kPageRows = 8;
/// What is looked at before the caret for the call around it, in bytes.
constexpr int kLookedBack = 8 << 10;

bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

std::size_t size(int position) {
    return static_cast<std::size_t>(std::max(position, 0));
}

}  // namespace

CodeAssist::CodeAssist(Surroundings surroundings)
    : editor_(surroundings.editor),
      view_(surroundings.view),
      service_(std::move(surroundings.service)),
      stopped_(std::move(surroundings.stopped)) {}

std::shared_ptr<const std::string> CodeAssist::text() {
    if (text_ == nullptr)
        text_ = std::make_shared<const std::string>(editor_.text().value_or(std::string()));
    return text_;
}

void CodeAssist::ask(AssistQuestion question, std::function<void(const AssistAnswer&)> then) {
    AssistService* const service = service_();
    if (service == nullptr) return;
    service->ask(text(), std::move(question),
                 [this, version = version_, then = std::move(then)](const AssistAnswer* answer) {
                     if (answer != nullptr && version == version_) then(*answer);
                 });
}

void CodeAssist::notified(const ControlNotification& notification) {
    switch (notification.code) {
        case sci::kCharAdded:
            return characterAdded(notification.character);
        case sci::kUpdateUi:
            return caretMoved();
        case sci::kModified:
            return textModified(notification);
        case sci::kDwellStart:
            return restedAt(notification.position);
        default:
            return;
    }
}

void CodeAssist::textModified(const ControlNotification& notification) {
    const bool inserts = (notification.modificationType & sci::kModInsertText) != 0;
    if (!inserts && (notification.modificationType & sci::kModDeleteText) == 0) return;
    ++version_;
    text_ = nullptr;
    const std::size_t begin = size(notification.position), length = size(notification.length);
    const std::size_t removed = inserts ? 0 : length, added = inserts ? length : 0;
    history_.changed(begin, removed, added);
    if (!changing_) snippet_.changed(begin, removed, added);
    if (!occurrences_.empty()) view_.markOccurrences(occurrences_ = {});
}

int CodeAssist::wordStart(int position) const {
    return static_cast<int>(
        editor_.send(sci::kWordStartPosition, static_cast<std::uintptr_t>(position), 1));
}

std::string CodeAssist::wordBeforeCaret() const {
    const int caret = editor_.caret();
    return wordBegin_ < 0 || wordBegin_ > caret ? std::string()
                                                : editor_.textOf({wordBegin_, caret});
}

bool CodeAssist::asksItself() const {
    return editor_.length() <= kLongestLive;
}

void CodeAssist::characterAdded(int character) {
    const bool asks = asksItself();
    if (asks && (character == '(' || character == ',')) askSignatures();
    if (character == ')' && callBegin_ >= 0) askSignatures();
    if (listOpen_ || listWanted_) {
        const bool inWord = character < 128 && isWordByte(static_cast<char>(character));
        if (inWord) return updateList();
        closeList();
    }
    if (!asks) return;
    const int caret = editor_.caret();
    if (character == '.') {
        const std::string before = editor_.textOf({std::max(caret - 2, 0), caret - 1});
        if (before.empty() || !isDigit(before[0])) askNames(false);
        return;
    }
    if (character == ':' && editor_.textOf({std::max(caret - 2, 0), caret}) == "::")
        return askNames(false);
    if (character > 127 || !isWordByte(static_cast<char>(character))) return;
    const std::string word = editor_.textOf({wordStart(caret), caret});
    if (word.size() == kShownFrom && !isDigit(word[0])) askNames(false);
}

void CodeAssist::caretMoved() {
    if (seenCaret_ == editor_.caret() && seenVersion_ == version_) return;
    seenCaret_ = editor_.caret();
    seenVersion_ = version_;
    if (std::exchange(tipOpen_, false)) view_.hideTips();
    if (listOpen_ || listWanted_) updateList();
    if (callBegin_ >= 0 && !listOpen_) askSignatures();
}

void CodeAssist::complete() {
    askNames(true);
}

void CodeAssist::askNames(bool byHand) {
    AssistService* const service = service_();
    if (service == nullptr) return;
    const int caret = editor_.caret();
    wordBegin_ = wordStart(caret);
    listByHand_ = byHand;
    listWanted_ = true;
    AssistQuestion question;
    question.kind = Kind::suggestions;
    question.offset = size(caret);
    service->ask(text(), std::move(question),
                 [this, begin = wordBegin_](const AssistAnswer* answer) {
                     if (listWanted_ && begin == wordBegin_) namesCame(answer);
                 });
}

/// The word may have grown meanwhile.
void CodeAssist::namesCame(const AssistAnswer* answer) {
    listWanted_ = false;
    if (answer == nullptr || answer->suggestions.empty()) return closeList();
    list_.set(answer->suggestions);
    listOpen_ = true;
    updateList();
}

void CodeAssist::updateList() {
    const int caret = editor_.caret();
    const std::string word = wordBeforeCaret();
    const bool left = caret < wordBegin_ || !std::all_of(word.begin(), word.end(), isWordByte) ||
                      editor_.lineOf(caret).index != editor_.lineOf(wordBegin_).index ||
                      (word.empty() && !listByHand_ && wordStart(wordBegin_) != wordBegin_);
    if (left) return closeList();
    if (!listOpen_ || (list_.count() > 0 && list_.word() == word)) return;
    list_.filter(word);
    if (list_.count() == 0 || list_.isWritten()) return closeList();
    view_.showSuggestions(list_, wordBegin_);
}

void CodeAssist::closeList() {
    listWanted_ = false;
    if (listOpen_) view_.hideSuggestions();
    listOpen_ = false;
    list_.clear();
    wordBegin_ = -1;
}

bool CodeAssist::listKey(const KeyPress& key) {
    if (key.control || key.alt || key.shift) return false;
    switch (key.code) {
        case KeyPress::kUp:
        case KeyPress::kDown:
            list_.move(key.code == KeyPress::kUp ? -1 : 1);
            break;
        case KeyPress::kPageUp:
        case KeyPress::kPageDown:
            list_.move(key.code == KeyPress::kPageUp ? -kPageRows : kPageRows);
            break;
        case KeyPress::kEnter:
            return list_.enterTakes() && takeChosen();
        case KeyPress::kTab:
            return takeChosen();
        default:
            return false;
    }
    view_.showSuggestions(list_, wordBegin_);
    return true;
}

bool CodeAssist::key(const KeyPress& key) {
    if (listOpen_ && listKey(key)) return true;
    if (listOpen_ && key == KeyPress{KeyPress::kEnter}) closeList();
    if (!snippet_.active() || key != KeyPress{KeyPress::kTab}) return false;
    const auto& ranges = snippet_.present();
    const bool inside = std::any_of(ranges.begin(), ranges.end(), [this](ByteRange range) {
        return range.begin <= caret() && caret() <= range.end;
    });
    if (!inside) snippet_.end();
    if (!snippet_.next()) return inside;
    selectStop();
    return true;
}

bool CodeAssist::escape() {
    if (listOpen_) return closeList(), true;
    if (snippet_.active()) {
        snippet_.end();
        view_.selectAll({{caret(), caret()}});
        return true;
    }
    if (!tipOpen_ && callBegin_ < 0) return false;
    hideAll();
    return true;
}

void CodeAssist::scrolled() {
    if (listOpen_) return view_.showSuggestions(list_, wordBegin_);
    hideAll();
}

/// What is still to be told of the caret's last move is no reason to close it.
void CodeAssist::openTip() {
    tipOpen_ = true;
    seenCaret_ = editor_.caret();
    seenVersion_ = version_;
}

void CodeAssist::hideAll() {
    closeList();
    if (tipOpen_ || callBegin_ >= 0) view_.hideTips();
    tipOpen_ = false;
    callBegin_ = -1;
}

bool CodeAssist::takeChosen() {
    const SuggestionList::Row* const row = list_.chosenRow();
    if (row == nullptr) return false;
    take(*row);
    return true;
}

void CodeAssist::suggestionTaken(std::size_t index) {
    if (!listOpen_ || index >= list_.count()) return;
    list_.choose(index);
    takeChosen();
}

void CodeAssist::take(const SuggestionList::Row& row) {
    const Suggestion suggestion = row.suggestion;
    const TextSpan word{wordBegin_, editor_.caret()};
    closeList();
    if (suggestion.snippet) {
        const UndoStep step(editor_);
        editor_.setTarget(word);
        editor_.replaceTarget("", false);
        editor_.select(word.start, word.start);
        return insertSnippet(suggestion);
    }
    editor_.setTarget(word);
    editor_.replaceTarget(suggestion.label, false);
    const int end = word.start + static_cast<int>(suggestion.label.size());
    editor_.select(end, end);
}

void CodeAssist::insertSnippet(const Suggestion& suggestion) {
    const int at = editor_.caret();
    const std::string line = editor_.textOf({editor_.lineStart(editor_.lineOf(at)), at});
    const std::string indent = line.substr(0, line.find_first_not_of(" \t"));
    const SnippetText snippet = readSnippet(suggestion.insert, indent);
    changing_ = true;
    editor_.setTarget({at, at});
    editor_.replaceTarget(snippet.text, false);
    changing_ = false;
    snippet_ = SnippetPlaces(snippet, size(at));
    selectStop();
}

/// The last place is only gone to.
void CodeAssist::selectStop() {
    const std::vector<ByteRange> ranges = snippet_.present();
    view_.selectAll(ranges);
    SnippetPlaces rest = snippet_;
    if (!rest.next()) snippet_.end();
}

void CodeAssist::showParameters() {
    askSignatures();
}

void CodeAssist::askSignatures() {
    const int at = editor_.caret();
    const int from = editor_.lineStart(editor_.lineOf(std::max(at - kLookedBack, 0)));
    const CallBefore call = callBefore(editor_.textOf({from, at}), false);
    if (call.bracket < 0) {
        if (callBegin_ >= 0) hideAll();
        return;
    }
    AssistQuestion question;
    question.kind = Kind::signatures;
    question.offset = size(at);
    ask(std::move(question), [this, bracket = from + call.bracket](const AssistAnswer& answer) {
        if (answer.signatures.all.empty()) {
            if (callBegin_ >= 0) hideAll();
            return;
        }
        callBegin_ = bracket;
        tipOpen_ = false;
        view_.showSignatures(answer.signatures, bracket);
    });
}

void CodeAssist::restedAt(int position) {
    if (position < 0 || listOpen_ || callBegin_ >= 0) return;
    const TextSpan word = editor_.wordAt(position);
    if (word.empty()) return;
    const ByteRange range{size(word.start), size(word.end)};
    if (stopped_()) {
        const std::string expression = expressionEndingWith(*text(), range);
        if (!expression.empty() && view_.showValue(expression, range)) {
            openTip();
            return;
        }
    }
    AssistQuestion question;
    question.kind = Kind::hover;
    question.offset = range.begin;
    ask(std::move(question), [this](const AssistAnswer& answer) {
        if (!answer.hover || listOpen_ || callBegin_ >= 0) return;
        openTip();
        view_.showDocumentation(*answer.hover);
    });
}

void CodeAssist::showDocumentation() {
    hideAll();
    restedAt(editor_.caret());
}

/// Marks every place of the name that the caret touches.
void CodeAssist::rested() {
    if (asksItself() && !editor_.wordAt(editor_.caret()).empty()) {
        AssistQuestion question;
        question.kind = Kind::occurrences;
        question.offset = caret();
        ask(std::move(question), [this, at = caret()](const AssistAnswer& answer) {
            if (at == caret()) view_.markOccurrences(occurrences_ = answer.places);
        });
    } else if (!occurrences_.empty()) {
        view_.markOccurrences(occurrences_ = {});
    }
}

void CodeAssist::goToDeclarationAt(int position) {
    hideAll();
    AssistQuestion question;
    question.kind = Kind::definition;
    question.offset = size(position);
    ask(std::move(question), [this, position](const AssistAnswer& answer) {
        if (!answer.refusal.empty()) {
            openTip();
            return view_.say(answer.refusal, position);
        }
        // On the declaration itself one looks for what uses it.
        if (answer.places.size() == 1 && answer.places[0] == answer.word)
            return listReferences(position);
        showPlaces(answer, Kind::definition);
    });
}

void CodeAssist::findReferences() {
    hideAll();
    listReferences(editor_.caret());
}

void CodeAssist::listReferences(int position) {
    AssistQuestion question;
    question.kind = Kind::references;
    question.offset = size(position);
    ask(std::move(question), [this, position](const AssistAnswer& answer) {
        if (!answer.refusal.empty()) {
            openTip();
            return view_.say(answer.refusal, position);
        }
        showPlaces(answer, Kind::references);
    });
}

void CodeAssist::showPlaces(const AssistAnswer& answer, Kind kind) {
    if (answer.places.empty()) return;
    if (kind == Kind::definition && answer.places.size() == 1) return goTo(answer.places[0].begin);
    std::vector<ListedPlace> places;
    for (const ByteRange& range : answer.places) {
        ListedPlace place{range, 0, {}};
        const ControlLine line = editor_.lineOf(static_cast<int>(range.begin));
        place.line = toScript(line).number;
        place.text = editor_.textOf({editor_.lineStart(line), editor_.lineEnd(line)});
        place.text.erase(0, place.text.find_first_not_of(" \t"));
        places.push_back(std::move(place));
    }
    const std::string name = text()->substr(answer.word.begin, answer.word.end - answer.word.begin);
    view_.choosePlace(kind == Kind::references, name, places);
}

void CodeAssist::placeChosen(const ListedPlace& place) {
    goTo(place.range.begin);
}

void CodeAssist::goTo(std::size_t position) {
    history_.leave(caret());
    view_.goTo(position);
}

void CodeAssist::textExchanged(std::uint64_t id) {
    hideAll();
    ++version_;
    text_ = nullptr;
    snippet_.end();
    occurrences_.clear();
    otherHistories_[textId_] = std::exchange(history_, {});
    textId_ = id;
    if (const auto found = otherHistories_.find(id); found != otherHistories_.end())
        history_ = std::exchange(found->second, {});
}

void CodeAssist::goBack() {
    if (const auto place = history_.back(caret())) view_.goTo(*place);
}

void CodeAssist::goForward() {
    if (const auto place = history_.forward(caret())) view_.goTo(*place);
}

void CodeAssist::rename() {
    hideAll();
    AssistQuestion question;
    question.kind = Kind::renamePlace;
    question.offset = caret();
    ask(std::move(question), [this, at = editor_.caret()](const AssistAnswer& answer) {
        if (!answer.refusal.empty()) {
            openTip();
            return view_.say(answer.refusal, at);
        }
        renamed_ = answer.word;
        view_.askName(text()->substr(renamed_.begin, renamed_.size()), renamed_);
    });
}

void CodeAssist::renameTo(const std::string& name) {
    if (name == text()->substr(std::min(renamed_.begin, text()->size()), renamed_.size()))
        return view_.closeName();
    AssistQuestion question;
    question.kind = Kind::rename;
    question.offset = renamed_.begin;
    question.name = name;
    ask(std::move(question), [this, name](const AssistAnswer& answer) {
        if (!answer.refusal.empty()) return view_.refuseName(answer.refusal);
        view_.closeName();
        apply(answer.places, name);
    });
}

/// One step of undo; the caret stays in its word.
void CodeAssist::apply(const std::vector<ByteRange>& ranges, const std::string& with) {
    const UndoStep step(editor_);
    std::size_t position = caret();
    for (auto range = ranges.rbegin(); range != ranges.rend(); ++range) {
        editor_.setTarget({static_cast<int>(range->begin), static_cast<int>(range->end)});
        editor_.replaceTarget(with, false);
        if (range->begin > position) continue;
        position = range->end <= position ? position - range->size() + with.size()
                                          : range->begin + with.size();
    }
    editor_.select(static_cast<int>(position), static_cast<int>(position));
}

void CodeAssist::mend(const Diagnostic& problem) {
    hideAll();
    AssistQuestion question;
    question.kind = Kind::repairs;
    question.problem = problem;
    ask(std::move(question), [this, at = editor_.caret()](const AssistAnswer& answer) {
        if (answer.repairs.empty()) {
            openTip();
            return view_.say({"Nothing is known that would mend this."}, at);
        }
        view_.chooseRepair(answer.repairs, at);
    });
}

void CodeAssist::repairChosen(const Repair& repair) {
    if (repair.range.end <= text()->size()) apply({repair.range}, repair.with);
}

void CodeAssist::reindent() {
    hideAll();
    const int begin = editor_.selectionStart(), end = editor_.selectionEnd();
    std::uint32_t first = 0, last = static_cast<std::uint32_t>(editor_.lineCount());
    if (begin != end) {
        first = static_cast<std::uint32_t>(editor_.lineOf(begin).index);
        last = static_cast<std::uint32_t>(editor_.lineOf(end - 1).index);
    }
    const ScopeIndex index(*text());
    const std::vector<BlankEdit> edits = indentationEdits(index, first, last);
    const UndoStep step(editor_);
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
        editor_.setTarget({static_cast<int>(edit->range.begin), static_cast<int>(edit->range.end)});
        editor_.replaceTarget(edit->blanks, false);
    }
}

}  // namespace korvant
