// How rows look, and what a view has to draw again.
#include "object/form/edit_core.h"

#include <algorithm>

#include "korvantide/script_object.h"
#include "object/form/expression_words.h"
#include "object/form/form_texts.h"
#include "object/form/report_text.h"
#include "object/form/value_text.h"

namespace korvant {

namespace {

bool sameValue(char letter, const ValueSlots& a, const ValueSlots& b) {
    switch (property_type::ofLetter(letter)) {
        case property_type::kInteger:
            return a.integer == b.integer;
        case property_type::kReal:
            return sameReal(a.real, b.real);
        case property_type::kBoolean:
            return a.boolean == b.boolean;
        default:
            return a.text == b.text;
    }
}

}  // namespace

EditCore::EditCore(const ObjectModel& object)
    : layout(object, ScriptObject::m_locale),
      values(object),
      desk(object, layout, values),
      rules(object, values, layout.locale),
      dirtyBars(layout.pages.size(), false) {
    rules.pass(RuleBook::kNoRow);
    for (int group = 0; group < desk.count(); ++group) desk.markShown(group);
    opening.reserve(object.properties.size());
    for (std::int32_t row = 0; row < layout.count(); ++row) opening.push_back(values.slots(row));
    rules.clearTouched();
}

bool EditCore::locked(std::int32_t row) const {
    const int page = layout.pageOfRow[at(row)];
    return layout.rows[at(row)].letter == '?' || !layout.flags[at(row)] ||
           !layout.pages[static_cast<std::size_t>(page)].editable || !desk.active(row);
}

ValueSlots EditCore::openingOf(std::int32_t row) const {
    const bool member = desk.groupOfRow(row) != GroupDesk::kNoGroup;
    return member && desk.active(row) ? desk.openingSlots(row) : opening[at(row)];
}

bool EditCore::rowChanged(std::int32_t row) const {
    return !sameValue(layout.rows[at(row)].letter, values.slots(row), openingOf(row));
}

Severity EditCore::severity(std::int32_t row) const {
    if (!desk.active(row)) return Severity::none;
    if (rules.failingErrors(row) > 0) return Severity::error;
    return rules.failingWarnings(row) > 0 ? Severity::warning : Severity::none;
}

/// The rows of a group without an element show nothing: what stands there is the layout's.
std::string EditCore::shownText(std::int32_t row) const {
    if (!desk.active(row)) return {};
    if (layout.rows[at(row)].letter == 'd' && rules.computed(row))
        return roundedText(values.real(row));
    return fullText(row);
}

std::string EditCore::fullText(std::int32_t row) const {
    const EditRow& shown = layout.rows[at(row)];
    switch (shown.letter) {
        case 'l':
            return std::to_string(values.integer(row));
        case 'c':
            return colourText(values.integer(row));
        case 'o': {
            const auto option = static_cast<std::size_t>(values.integer(row));
            return option < shown.options.size() ? shown.options[option] : std::string();
        }
        case 'd':
            return realText(values.real(row));
        case 'b':
            return formText(values.boolean(row) ? FormText::yes : FormText::no, layout.locale);
        default:
            return values.text(row);
    }
}

/// What the rows of a group without a current element wait for: the outermost group that lacks one
/// comes first.
EditCore::Obstacle EditCore::missingElement(int number) const {
    const EditGroup& group = desk.group(number);
    int outermost = number;
    for (int outer = group.outer; outer != GroupDesk::kNoGroup; outer = desk.group(outer).outer)
        if (!desk.group(outer).content.hasCurrent()) outermost = outer;
    if (outermost != number) {
        const EditPage& page = layout.pages[static_cast<std::size_t>(desk.group(outermost).page)];
        return {FormText::needsOuterElement, "\"" + page.caption + "\" ", {}};
    }
    if (group.content.size() > 0) return {FormText::noElementChosen, {}, {}};
    return {group.flags.add ? FormText::noElement : FormText::noElementAtAll, {}, {}};
}

EditCore::Obstacle EditCore::obstacle(std::int32_t row) const {
    const int page = layout.pageOfRow[at(row)];
    if (!layout.pages[static_cast<std::size_t>(page)].editable)
        return {FormText::lockedPage, {}, {}};
    if (!desk.active(row)) return missingElement(desk.groupOfRow(row));
    if (locked(row)) return {FormText::lockedRow, {}, {}};
    if (enabled(row)) return {FormText::none, {}, {}};
    std::string conditions;
    for (const std::string& one : rules.failedEnables(row)) conditions += " " + one;
    return {FormText::disabledBy, {}, conditions};
}

EditCommit EditCore::refusal(std::int32_t row) const {
    const Obstacle why = obstacle(row);
    return {false, why.subject + formText(why.text, layout.locale) + why.conditions};
}

std::string EditCore::description(std::int32_t row) {
    static const std::string kNone;
    const bool active = desk.active(row);
    const std::optional<std::string>& hint = layout.hints[at(row)];
    std::string html = describe({layout.rows[at(row)].label, hint ? &*hint : nullptr,
                                 active ? rules.errorReport(row) : kNone,
                                 active ? rules.warningReport(row) : kNone});
    const Obstacle why = obstacle(row);
    if (why.text != FormText::none)
        html +=
            greyLine(htmlOfPlain(why.subject) + htmlOfWestern(formText(why.text, layout.locale)) +
                     htmlOfPlain(why.conditions));
    for (const RuleBook::Fault& fault : rules.faults(row))
        html += greyLine(htmlOfPlain(fault.expression + ": ") +
                         htmlOfWestern(expressionMessage(fault.message, layout.locale)));
    return html;
}

std::vector<std::int32_t> EditCore::radioMembers(std::int32_t row) const {
    const EditRow& chosen = layout.rows[at(row)];
    if (chosen.radioGroup < 0) return {row};
    std::vector<std::int32_t> members;
    for (const EditRow& other : layout.rows)
        if (other.letter == 'b' && other.radioGroup == chosen.radioGroup &&
            desk.groupOfRow(other.property) == desk.groupOfRow(row))
            members.push_back(other.property);
    return members;
}

void EditCore::revert(const EditStep& step) {
    for (auto one = step.values.rbegin(); one != step.values.rend(); ++one)
        values.set(one->property, one->before);
    for (auto one = step.groups.rbegin(); one != step.groups.rend(); ++one)
        desk.setContent(one->group, one->before);
    rules.check();
    noteChanges(step.groups);
}

void EditCore::repeat(const EditStep& step) {
    for (const ValueChange& one : step.values) values.set(one.property, one.after);
    for (const GroupChange& one : step.groups) desk.setContent(one.group, one.after);
    rules.check();
    noteChanges(step.groups);
}

void EditCore::resetSlot(std::int32_t row) {
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

void EditCore::noteChanges(const GroupJournal& groups) {
    for (const std::int32_t row : rules.touched()) {
        dirtyRows.push_back(row);
        const int group = desk.groupOfRow(row);
        // The caption of an element holds a value of it.
        if (group != GroupDesk::kNoGroup) noteBar(group);
    }
    rules.clearTouched();
    for (const GroupChange& one : groups) noteGroup(one.group);
}

void EditCore::noteBar(int group) {
    dirtyBars[static_cast<std::size_t>(desk.group(group).page)] = true;
}

void EditCore::noteGroup(int group) {
    noteBar(group);
    const std::vector<std::int32_t>& members = desk.group(group).members;
    dirtyRows.insert(dirtyRows.end(), members.begin(), members.end());
}

bool EditCore::changed() const {
    for (int group = 0; group < desk.count(); ++group)
        if (desk.changed(group)) return true;
    for (std::int32_t row = 0; row < layout.count(); ++row)
        if (rowChanged(row)) return true;
    return false;
}

}  // namespace korvant
