#include "object/form/edit_session.h"

#include <algorithm>

#include "object/form/edit_state.h"
#include "object/form/form_texts.h"

namespace korvant {

namespace {

const EditPage kNoPage;
const EditRow kNoRow;
const std::string kNoText;

}  // namespace

EditSession::EditSession(const ObjectModel& object) : state_(std::make_unique<EditState>(object)) {}

EditSession::~EditSession() = default;

FormKind EditSession::kind() const {
    return state_->core.layout.kind;
}

const std::string& EditSession::title() const {
    return state_->core.layout.title;
}

std::int32_t EditSession::locale() const {
    return state_->core.layout.locale;
}

int EditSession::pageCount() const {
    return static_cast<int>(state_->core.layout.pages.size());
}

const EditPage& EditSession::page(int page) const {
    if (!state_->core.layout.holdsPage(page)) return kNoPage;
    return state_->core.layout.pages[static_cast<std::size_t>(page)];
}

Severity EditSession::pageSeverity(int page) const {
    return state_->core.layout.holdsPage(page) ? state_->marks.ofPage(page) : Severity::none;
}

int EditSession::pageOf(std::int32_t property) const {
    if (!state_->core.layout.holds(property)) return -1;
    return state_->core.layout.pageOfRow[static_cast<std::size_t>(property)];
}

bool EditSession::pageHasUnits(int number) const {
    const EditPage& shown = page(number);
    for (std::int32_t at = shown.first; at <= shown.last; ++at)
        if (!row(at).unit.empty()) return true;
    return false;
}

std::int32_t EditSession::rowCount() const {
    return state_->core.layout.count();
}

const EditRow& EditSession::row(std::int32_t property) const {
    if (!state_->core.layout.holds(property)) return kNoRow;
    return state_->core.layout.rows[static_cast<std::size_t>(property)];
}

EditRowState EditSession::state(std::int32_t property) const {
    EditRowState shown;
    if (!state_->core.layout.holds(property)) return shown;
    shown.text = state_->core.shownText(property);
    shown.enabled = state_->core.enabled(property);
    shown.locked = state_->core.locked(property);
    shown.changed = state_->core.rowChanged(property);
    shown.editable = shown.enabled && !shown.locked;
    shown.visible = state_->search.visible(property);
    shown.computed = state_->core.rules.computed(property);
    shown.empty = !state_->core.desk.active(property);
    shown.radioSet = row(property).radioGroup >= 0 && state_->core.values.boolean(property);
    shown.severity = state_->core.severity(property);
    return shown;
}

std::string EditSession::fullText(std::int32_t property) const {
    const bool shown = state_->core.layout.holds(property) && state_->core.desk.active(property);
    return shown ? state_->core.fullText(property) : std::string();
}

std::string EditSession::categoryCaption(std::int32_t category) const {
    const auto at = static_cast<std::size_t>(category);
    if (category >= 0 && at < state_->core.layout.categories.size())
        return state_->core.layout.categories[at];
    return defaultCategoryCaption(state_->core.layout.locale);
}

std::int32_t EditSession::findRow(const std::string& name) const {
    const std::vector<EditRow>& rows = state_->core.layout.rows;
    const auto named = [&name](const EditRow& one) { return one.name == name; };
    const auto found = std::find_if(rows.begin(), rows.end(), named);
    return found == rows.end() ? -1 : found->property;
}

std::string EditSession::description(std::int32_t property) const {
    return state_->core.layout.holds(property) ? state_->core.description(property) : std::string();
}

const std::string& EditSession::errorReport(std::int32_t property) const {
    const bool shown = state_->core.layout.holds(property) && state_->core.desk.active(property);
    return shown ? state_->core.rules.errorReport(property) : kNoText;
}

const std::string& EditSession::warningReport(std::int32_t property) const {
    const bool shown = state_->core.layout.holds(property) && state_->core.desk.active(property);
    return shown ? state_->core.rules.warningReport(property) : kNoText;
}

std::vector<std::string> EditSession::failing(std::int32_t property, bool errors) const {
    const bool shown = state_->core.layout.holds(property) && state_->core.desk.active(property);
    return shown ? state_->core.rules.failing(property, errors) : std::vector<std::string>();
}

const std::string& EditSession::textValue(std::int32_t property) const {
    return state_->core.layout.holds(property) ? state_->core.values.text(property) : kNoText;
}

std::int32_t EditSession::integerValue(std::int32_t property) const {
    return state_->core.layout.holds(property) ? state_->core.values.integer(property) : 0;
}

double EditSession::realValue(std::int32_t property) const {
    return state_->core.layout.holds(property) ? state_->core.values.real(property) : 0.0;
}

bool EditSession::booleanValue(std::int32_t property) const {
    return state_->core.layout.holds(property) && state_->core.values.boolean(property);
}

EditCommit EditSession::commitText(std::int32_t property, const std::string& typed) {
    if (!state_->core.layout.holds(property)) return {false, {}};
    if (!state_->core.editable(property)) return state_->core.refusal(property);
    // What the row shows may stand for a value that no text reads back to.
    if (typed == state_->core.shownText(property) || typed == state_->core.fullText(property))
        return {};
    return state_->storeTyped(property, typed);
}

EditCommit EditSession::setBoolean(std::int32_t property, bool value) {
    if (!state_->core.layout.holds(property) || row(property).letter != 'b') return {false, {}};
    if (!state_->core.editable(property)) return state_->core.refusal(property);
    return state_->storeBoolean(property, value);
}

EditCommit EditSession::setOption(std::int32_t property, std::int32_t option) {
    if (!state_->core.layout.holds(property) || row(property).letter != 'o') return {false, {}};
    if (!state_->core.editable(property)) return state_->core.refusal(property);
    if (option < 0 || static_cast<std::size_t>(option) >= row(property).options.size())
        return {false, formText(FormText::needsOption, locale())};
    return state_->store(property, option);
}

EditCommit EditSession::setColour(std::int32_t property, std::int32_t colour) {
    if (!state_->core.layout.holds(property) || row(property).letter != 'c') return {false, {}};
    if (!state_->core.editable(property)) return state_->core.refusal(property);
    return state_->store(property, colour);
}

EditCommit EditSession::resetRow(std::int32_t property) {
    if (!state_->core.layout.holds(property)) return {false, {}};
    if (!state_->core.editable(property)) return state_->core.refusal(property);
    state_->reset(property);
    return {};
}

bool EditSession::canUndo() const {
    return state_->history.canUndo();
}

bool EditSession::canRedo() const {
    return state_->history.canRedo();
}

EditPlace EditSession::undo() {
    return state_->undo();
}

EditPlace EditSession::redo() {
    return state_->redo();
}

EditGroupBar EditSession::groupBar(int page) const {
    return state_->core.layout.holdsPage(page) ? state_->groupBar(page, true) : EditGroupBar();
}

void EditSession::setFilter(const std::string& words) {
    state_->search.setFilter(words);
}

std::int32_t EditSession::visibleRows(int number) const {
    const EditPage& shown = page(number);
    std::int32_t count = 0;
    for (std::int32_t at = shown.first; at <= shown.last; ++at)
        count += state_->search.visible(at) ? 1 : 0;
    return count;
}

std::int32_t EditSession::nextEditable(std::int32_t property, bool forward) const {
    const EditPage& shown = page(pageOf(property));
    if (property < shown.first || property > shown.last) return -1;
    const std::int32_t step = forward ? 1 : -1;
    for (std::int32_t at = property + step; at >= shown.first && at <= shown.last; at += step)
        if (state_->search.visible(at) && state_->core.editable(at)) return at;
    return -1;
}

EditChanges EditSession::takeChanges() {
    return state_->takeChanges();
}

bool EditSession::changed() const {
    return state_->core.changed();
}

}  // namespace korvant
