#include "editor/control/search_dialogs.h"

#include "base/text/number_text.h"

namespace korvant {

std::uint32_t searchFlags(const SearchOptions& options) {
    return (options.matchCase ? sci::kFindMatchCase : 0) |
           (options.wholeWords ? sci::kFindWholeWord : 0) |
           (options.regularExpressions ? sci::kFindRegExp : 0);
}

FindDialog::FindDialog(std::shared_ptr<Search> search, EditorWindow& window)
    : search_(search), window_(window) {}

SearchFields FindDialog::open() const {
    SearchFields fields;
    const std::shared_ptr<Search> search = search_.lock();
    if (!search) return fields;
    fields.searched = search->searched.newestFirst();
    fields.replacements = search->replacements.newestFirst();
    fields.text = search->textToStartWith().value_or(std::string());
    return fields;
}

std::shared_ptr<Search> FindDialog::begin(const SearchOptions& options) {
    std::shared_ptr<Search> search = search_.lock();
    if (search) search->setFlags(searchFlags(options));
    return search;
}

bool FindDialog::beepUnless(bool found) {
    if (!found) window_.beep();
    return found;
}

SearchOutcome FindDialog::find(const std::string& text, const SearchOptions& options,
                               bool forward) {
    SearchOutcome outcome;
    const std::shared_ptr<Search> search = begin(options);
    if (!search) return outcome;
    const bool first = search->searched.empty();
    // Deliberate: the very first text does not show up in the list of the open dialog.
    outcome.insertOnTop = search->searched.add(text) && !first;
    outcome.found = beepUnless(forward ? search->findNext(text) : search->findPrevious(text));
    return outcome;
}

SearchOutcome FindDialog::next(const std::string& text, const SearchOptions& options) {
    return {find(text, options, true).found, false};
}

SearchOutcome FindDialog::previous(const std::string& text, const SearchOptions& options) {
    return {find(text, options, false).found, false};
}

SearchFields ReplaceDialog::open() const {
    SearchFields fields = FindDialog::open();
    fields.replacement = fields.text;
    return fields;
}

SearchOutcome ReplaceDialog::findOnwards(const std::string& text, const SearchOptions& options,
                                         bool forward) {
    if (inSelection_) return {};
    forward_ = forward;
    return find(text, options, forward);
}

SearchOutcome ReplaceDialog::next(const std::string& text, const SearchOptions& options) {
    return findOnwards(text, options, true);
}

SearchOutcome ReplaceDialog::previous(const std::string& text, const SearchOptions& options) {
    return findOnwards(text, options, false);
}

SearchOutcome ReplaceDialog::replace(const std::string& text, const std::string& replacement,
                                     const SearchOptions& options) {
    SearchOutcome outcome;
    const std::shared_ptr<Search> search = begin(options);
    if (!search || inSelection_) return outcome;
    const TextSpan old = search->selection();
    if (!search->replaceSelection(replacement)) return outcome;
    search->replacements.add(replacement);
    search->moveTo(forward_ ? old.end : old.start);
    outcome.found = beepUnless(forward_ ? search->findNext(text) : search->findPrevious(text));
    return outcome;
}

SearchOutcome ReplaceDialog::replaceAll(const std::string& text, const std::string& replacement,
                                        const SearchOptions& options) {
    const std::shared_ptr<Search> search = begin(options);
    if (!search) return {};
    search->replaceAll(text, replacement, inSelection_);
    search->searched.add(text);
    search->replacements.add(replacement);
    return {true, false};
}

std::optional<std::int32_t> lineNumberOf(const std::string& field) {
    return parseInt(field);
}

}  // namespace korvant
