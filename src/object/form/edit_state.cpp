// How rows look, and steps of undo.
#include "object/form/edit_state.h"

#include <algorithm>

#include "korvantide/script_object.h"
#include "object/form/expression_words.h"
#include "object/form/form_texts.h"
#include "object/form/report_text.h"
#include "object/form/value_text.h"

namespace korvant {

namespace {

constexpr std::size_t kStepsKept = 1000;

/// The journals are in use for as long as it lives.
class Recording {
  public:
    Recording(WorkingCopy& values, GroupDesk& desk, EditStep& step) : values_(values), desk_(desk) {
        values.setJournal(&step.values);
        desk.setJournal(&step.groups);
    }
    ~Recording() {
        values_.setJournal(nullptr);
        desk_.setJournal(nullptr);
    }
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

  private:
    WorkingCopy& values_;
    GroupDesk& desk_;
};

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

EditState::EditState(const ObjectModel& object)
    : layout(object, ScriptObject::m_locale),
      values(object),
      desk(object, layout, values),
      rules(object, values, layout.locale),
      visible(object.properties.size(), true),
      shownSeverity(layout.pages.size(), Severity::none),
      dirtyBars(layout.pages.size(), false) {
    rules.pass(RuleBook::kNoRow);
    for (int group = 0; group < desk.count(); ++group) desk.markShown(group);
    opening.reserve(object.properties.size());
    for (std::int32_t row = 0; row < layout.count(); ++row) opening.push_back(values.slots(row));
    rules.clearTouched();
    refreshMarks();
    takeChanges();
    for (std::size_t page = 0; page < shownSeverity.size(); ++page)
        shownSeverity[page] = pageSeverity(static_cast<int>(page));
}

bool EditState::locked(std::int32_t row) const {
    const int page = layout.pageOfRow[at(row)];
    return layout.rows[at(row)].letter == '?' || !layout.flags[at(row)] ||
           !layout.pages[static_cast<std::size_t>(page)].editable || !desk.active(row);
}

ValueSlots EditState::openingOf(std::int32_t row) const {
    const bool member = desk.groupOfRow(row) != GroupDesk::kNoGroup;
    return member && desk.active(row) ? desk.openingSlots(row) : opening[at(row)];
}

bool EditState::rowChanged(std::int32_t row) const {
    return !sameValue(layout.rows[at(row)].letter, values.slots(row), openingOf(row));
}

Severity EditState::severity(std::int32_t row) const {
    if (!desk.active(row)) return Severity::none;
    if (rules.failingErrors(row) > 0) return Severity::error;
    return rules.failingWarnings(row) > 0 ? Severity::warning : Severity::none;
}

Severity EditState::pageSeverity(int page) const {
    const EditPage& shown = layout.pages[static_cast<std::size_t>(page)];
    Severity worst = marks.pages[static_cast<std::size_t>(page)];
    for (std::int32_t row = shown.first; row <= shown.last && worst != Severity::error; ++row)
        worst = std::max(worst, severity(row));
    return worst;
}

/// The rows of a group without an element show nothing: what stands there is the layout's.
std::string EditState::shownText(std::int32_t row) const {
    if (!desk.active(row)) return {};
    if (layout.rows[at(row)].letter == 'd' && rules.computed(row))
        return roundedText(values.real(row));
    return fullText(row);
}

std::string EditState::fullText(std::int32_t row) const {
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
EditState::Obstacle EditState::missingElement(int number) const {
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

EditState::Obstacle EditState::obstacle(std::int32_t row) const {
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

EditCommit EditState::refusal(std::int32_t row) const {
    const Obstacle why = obstacle(row);
    return {false, why.subject + formText(why.text, layout.locale) + why.conditions};
}

std::string EditState::description(std::int32_t row) {
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

bool EditState::transact(EditPlace place, std::int32_t edited, bool browse,
                         const std::function<void()>& change) {
    EditStep step;
    {
        const Recording recording(values, desk, step);
        change();
        rules.pass(edited);
        for (const GroupChange& one : GroupJournal(step.groups)) desk.markShown(one.group);
    }
    step.browse = browse;
    step.place = place;
    noteChanges(step.groups);
    refreshMarks(step);
    if (step.values.empty() && step.groups.empty()) return false;
    if (done.size() == kStepsKept) done.erase(done.begin());
    done.push_back(std::move(step));
    undone.clear();
    historyChanged = true;
    return true;
}

void EditState::revert(const EditStep& step) {
    for (auto one = step.values.rbegin(); one != step.values.rend(); ++one)
        values.set(one->property, one->before);
    for (auto one = step.groups.rbegin(); one != step.groups.rend(); ++one)
        desk.setContent(one->group, one->before);
    rules.check();
    noteChanges(step.groups);
}

void EditState::repeat(const EditStep& step) {
    for (const ValueChange& one : step.values) values.set(one.property, one.after);
    for (const GroupChange& one : step.groups) desk.setContent(one.group, one.after);
    rules.check();
    noteChanges(step.groups);
}

void EditState::noteChanges(const GroupJournal& groups) {
    for (const std::int32_t row : rules.touched()) {
        dirtyRows.push_back(row);
        const int group = desk.groupOfRow(row);
        // The caption of an element holds a value of it.
        if (group != GroupDesk::kNoGroup) noteBar(group);
    }
    rules.clearTouched();
    for (const GroupChange& one : groups) noteGroup(one.group);
}

void EditState::noteBar(int group) {
    dirtyBars[static_cast<std::size_t>(desk.group(group).page)] = true;
}

void EditState::noteGroup(int group) {
    noteBar(group);
    const std::vector<std::int32_t>& members = desk.group(group).members;
    dirtyRows.insert(dirtyRows.end(), members.begin(), members.end());
}

bool EditState::changed() const {
    for (int group = 0; group < desk.count(); ++group)
        if (desk.changed(group)) return true;
    for (std::int32_t row = 0; row < layout.count(); ++row)
        if (rowChanged(row)) return true;
    return false;
}

}  // namespace korvant
