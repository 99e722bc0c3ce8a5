#include "object/form/row_search.h"

#include <utility>

namespace korvant {

void RowSearch::setFilter(const std::string& words) {
    filter_ = RowFilter(words);
    if (!filter_.empty() && texts_.empty()) makeTexts();
    changed_ = true;
    for (std::int32_t row = 0; row < core_.layout.count(); ++row)
        visible_[EditCore::at(row)] =
            filter_.empty() ||
            filter_.accepts(texts_[EditCore::at(row)], folded(core_.shownText(row)));
}

void RowSearch::makeTexts() {
    const FormLayout& layout = core_.layout;
    texts_.reserve(layout.rows.size());
    for (const EditRow& row : layout.rows) {
        const std::optional<std::string>& hint = layout.hints[EditCore::at(row.property)];
        std::string text = folded(row.label) + "\n" + folded(row.unit);
        if (row.category >= 0) text += "\n" + folded(layout.categories[EditCore::at(row.category)]);
        if (hint) text += "\n" + folded(*hint);
        texts_.push_back(std::move(text));
    }
}

bool RowSearch::takeChanged() {
    return std::exchange(changed_, false);
}

}  // namespace korvant
