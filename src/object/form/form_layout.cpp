#include "object/form/form_layout.h"

#include "object/form/form_texts.h"

namespace korvant {

FormLayout::FormLayout(const ObjectModel& object, std::int32_t language)
    : kind(object.classes.size() >= 2 ? FormKind::sheet : FormKind::dialog),
      title(object.title.text()),
      locale(language),
      pageOfRow(object.properties.size(), -1) {
    makePages(object);
    makeRows(object);
}

/// Classes share the properties out; what stands before the first class goes with it.
void FormLayout::makePages(const ObjectModel& object) {
    if (kind == FormKind::dialog) {
        makePage(object, title, 0, 0, object.count() - 1);
        return;
    }
    for (std::size_t i = 0; i < object.classes.size(); ++i) {
        const bool final = i + 1 == object.classes.size();
        const std::int32_t first = i == 0 ? 0 : object.classes[i].first;
        const std::int32_t last = (final ? object.count() : object.classes[i + 1].first) - 1;
        makePage(object, object.translate(object.classes[i].name, locale), i, first, last);
    }
}

void FormLayout::makePage(const ObjectModel& object, const std::string& caption,
                          std::size_t classIndex, std::int32_t first, std::int32_t last) {
    EditPage made{caption, true, first, last, false};
    std::string group;
    if (classIndex < object.classes.size()) {
        const ClassRecord& shown = object.classes[classIndex];
        made.editable = shown.value;
        const GroupRecord* record = shown.skip ? object.findGroup(shown.name) : nullptr;
        made.isGroup = record != nullptr && record->declared;
        if (made.isGroup) group = shown.name;
    }
    const int number = static_cast<int>(pages.size());
    for (std::int32_t row = first; row <= last; ++row)
        pageOfRow[static_cast<std::size_t>(row)] = number;
    pages.push_back(std::move(made));
    groupOfPage.push_back(std::move(group));
}

void FormLayout::makeRows(const ObjectModel& object) {
    for (const CategoryRecord& category : object.categories)
        categories.push_back(object.translate(category.name, locale));
    std::size_t begun = 0;  // categories that begin at or before the row
    for (const PropertyRecord& property : object.properties) {
        const std::int32_t index = count();
        while (begun < object.categories.size() && object.categories[begun].first <= index) ++begun;
        EditRow row = makeRow(object, index);
        const EditPage& page = pages[static_cast<std::size_t>(pageOfRow[rows.size()])];
        // A category does not go on into the next page.
        if (begun > 0 && object.categories[begun - 1].first >= page.first)
            row.category = static_cast<std::int32_t>(begun - 1);
        rows.push_back(std::move(row));
        flags.push_back(property.flag);
        const std::optional<std::string>& hint = object.rulesOf(property).hint;
        hints.push_back(hint ? std::optional(object.translate(*hint, locale)) : std::nullopt);
    }
}

EditRow FormLayout::makeRow(const ObjectModel& object, std::int32_t index) const {
    const auto at = static_cast<std::size_t>(index);
    const PropertyRecord& property = object.properties[at];
    const std::string unit(object.labels.unit(at));
    EditRow row;
    row.property = index;
    row.letter = property.letter;
    row.name = property.name;
    row.label = object.translate(std::string(object.labels.label(at)), locale);
    row.radioGroup = property.letter == 'b' ? property.radioGroup : -1;
    const bool file = property.letter == 'F' || property.letter == 'f';
    if (file) {
        row.filters =
            parseFileFilter(object.translate(unit, locale), formText(FormText::allFiles, locale));
    } else if (property.letter != 'c' && property.letter != 'o') {
        row.unit = object.translate(unit, locale);
    }
    if (property.letter == 'o' && property.options >= 0)
        for (const std::string& option :
             object.optionLists[static_cast<std::size_t>(property.options)])
            row.options.push_back(object.translate(option, locale));
    return row;
}

}  // namespace korvant
