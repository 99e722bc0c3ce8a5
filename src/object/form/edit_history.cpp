// Undo, reset, search, and what a view has to draw again.
#include <algorithm>

#include "object/form/edit_state.h"

namespace korvant {

/// Index of the step that undo takes back, with the looking around behind it; kNoStep: none.
std::size_t EditState::firstToUndo() const {
    for (std::size_t i = done.size(); i > 0; --i)
        if (!done[i - 1].browse) return i - 1;
    return kNoStep;
}

EditPlace EditState::undo() {
    const std::size_t first = firstToUndo();
    if (first == kNoStep) return {};
    while (done.size() > first) {
        revert(done.back());
        undone.push_back(std::move(done.back()));
        done.pop_back();
    }
    refreshMarks();
    lastEdited = RuleBook::kNoRow;
    historyChanged = true;
    return undone.back().place;
}

/// Goes on to the looking around that came after the step, but not into the next one.
EditPlace EditState::redo() {
    EditPlace place;
    for (bool first = true; !undone.empty() && (first || undone.back().browse); first = false) {
        repeat(undone.back());
        if (!undone.back().browse) place = undone.back().place;
        done.push_back(std::move(undone.back()));
        undone.pop_back();
    }
    refreshMarks();
    lastEdited = RuleBook::kNoRow;
    historyChanged = true;
    return place;
}

/// The members of a radio group go back together, or two of them could be set.
void EditState::reset(std::int32_t row) {
    lastEdited = row;
    transact({layout.pageOfRow[at(row)], row}, row, false, [&] {
        for (const std::int32_t member : radioMembers(row)) resetSlot(member);
    });
}

void EditState::resetSlot(std::int32_t row) {
    const ValueSlots slots = openingOf(row);
    switch (property_type::ofLetter(layout.rows[at(row)].letter)) {
        case property_type::kInteger:
            values.setInteger(row, slots.integer);
            break;
        case property_type::kReal:
            values.setReal(row, slots.real);
            break;
        case property_type::kBoolean:
            values.setBoolean(row, slots.boolean);
            break;
        default:
            values.setText(row, slots.text);
    }
}

void EditState::setFilter(const std::string& words) {
    filter = RowFilter(words);
    if (!filter.empty() && searchTexts.empty()) makeSearchTexts();
    filterChanged = true;
    for (std::int32_t row = 0; row < layout.count(); ++row)
        visible[at(row)] =
            filter.empty() || filter.accepts(searchTexts[at(row)], folded(shownText(row)));
}

void EditState::makeSearchTexts() {
    searchTexts.reserve(layout.rows.size());
    for (const EditRow& row : layout.rows) {
        const std::optional<std::string>& hint = layout.hints[at(row.property)];
        std::string text = folded(row.label) + "\n" + folded(row.unit);
        if (row.category >= 0) text += "\n" + folded(layout.categories[at(row.category)]);
        if (hint) text += "\n" + folded(*hint);
        searchTexts.push_back(std::move(text));
    }
}

EditChanges EditState::takeChanges() {
    EditChanges changes;
    std::sort(dirtyRows.begin(), dirtyRows.end());
    dirtyRows.erase(std::unique(dirtyRows.begin(), dirtyRows.end()), dirtyRows.end());
    changes.rows.swap(dirtyRows);
    for (int page = 0; page < static_cast<int>(layout.pages.size()); ++page) {
        const auto number = static_cast<std::size_t>(page);
        const Severity now = pageSeverity(page);
        if (now != shownSeverity[number] || dirtyBars[number]) changes.pages.push_back(page);
        shownSeverity[number] = now;
        dirtyBars[number] = false;
    }
    changes.filter = std::exchange(filterChanged, false);
    changes.history = std::exchange(historyChanged, false);
    return changes;
}

}  // namespace korvant
