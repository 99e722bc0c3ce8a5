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
    return state_->layout.kind;
}

const std::string& EditSession::title() const {
    return state_->layout.title;
}

std::int32_t EditSession::locale() const {
    return state_->layout.locale;
}

int EditSession::pageCount() const {
    return static_cast<int>(state_->layout.pages.size());
}

const EditPage& EditSession::page(int page) const {
    if (!state_->layout.holdsPage(page)) return kNoPage;
    return state_->layout.pages[static_cast<std::size_t>(page)];
}

Severity EditSession::pageSeverity(int page) const {
    return state_->layout.holdsPage(page) ? state_->pageSeverity(page) : Severity::none;
}

int EditSession::pageOf(std::int32_t property) const {
    if (!state_->layout.holds(property)) return -1;
    return state_->layout.pageOfRow[static_cast<std::size_t>(property)];
}

bool EditSession::pageHasUnits(int number) const {
    const EditPage& shown = page(number);
    for (std::int32_t at = shown.first; at <= shown.last; ++at)
        if (!row(at).unit.empty()) return true;
    return false;
}

std::int32_t EditSession::rowCount() const {
    return state_->layout.count();
}

const EditRow& EditSession::row(std::int32_t property) const {
    if (!state_->layout.holds(property)) return kNoRow;
    return state_->layout.rows[static_cast<std::size_t>(property)];
}

EditRowState EditSession::state(std::int32_t property) const {
    EditRowState shown;
    if (!state_->layout.holds(property)) return shown;
    shown.text = state_->shownText(property);
    shown.enabled = state_->enabled(property);
    shown.locked = state_->locked(property);
    shown.changed = state_->rowChanged(property);
    shown.editable = shown.enabled && !shown.locked;
    shown.visible = state_->visible[static_cast<std::size_t>(property)];
    shown.computed = state_->rules.computed(property);
    shown.empty = !state_->desk.active(property);
    shown.radioSet = row(property).radioGroup >= 0 && state_->values.boolean(property);
    shown.severity = state_->severity(property);
    return shown;
}

std::string EditSession::fullText(std::int32_t property) const {
    const bool shown = state_->layout.holds(property) && state_->desk.active(property);
    return shown ? state_->fullText(property) : std::string();
}

std::string EditSession::categoryCaption(std::int32_t category) const {
    const auto at = static_cast<std::size_t>(category);
    if (category >= 0 && at < state_->layout.categories.size())
        return state_->layout.categories[at];
    return defaultCategoryCaption(state_->layout.locale);
}

std::int32_t EditSession::findRow(const std::string& name) const {
    const std::vector<EditRow>& rows = state_->layout.rows;
    const auto named = [&name](const EditRow& one) { return one.name == name; };
    const auto found = std::find_if(rows.begin(), rows.end(), named);
    return found == rows.end() ? -1 : found->property;
}

std::string EditSession::description(std::int32_t property) const {
    return state_->layout.holds(property) ? state_->description(property) : std::string();
}

const std::string& EditSession::errorReport(std::int32_t property) const {
    const bool shown = state_->layout.holds(property) && state_->desk.active(property);
    return shown ? state_->rules.errorReport(property) : kNoText;
}

const std::string& EditSession::warningReport(std::int32_t property) const {
    const bool shown = state_->layout.holds(property) && state_->desk.active(property);
    return shown ? state_->rules.warningReport(property) : kNoText;
}

std::vector<std::string> EditSession::failing(std::int32_t property, bool errors) const {
    const bool shown = state_->layout.holds(property) && state_->desk.active(property);
    return shown ? state_->rules.failing(property, errors) : std::vector<std::string>();
}

const std::string& EditSession::textValue(std::int32_t property) const {
    return state_->layout.holds(property) ? state_->values.text(property) : kNoText;
}

std::int32_t EditSession::integerValue(std::int32_t property) const {
    return state_->layout.holds(property) ? state_->values.integer(property) : 0;
}

double EditSession::realValue(std::int32_t property) const {
    return state_->layout.holds(property) ? state_->values.real(property) : 0.0;
}

bool EditSession::booleanValue(std::int32_t property) const {
    return state_->layout.holds(property) && state_->values.boolean(property);
}

EditCommit EditSession::commitText(std::int32_t property, const std::string& typed) {
    if (!state_->layout.holds(property)) return {false, {}};
    if (!state_->editable(property)) return state_->refusal(property);
    // What the row shows may stand for a value that no text reads back to.
    if (typed == state_->shownText(property) || typed == state_->fullText(property)) return {};
    return state_->storeTyped(property, typed);
}

EditCommit EditSession::setBoolean(std::int32_t property, bool value) {
    if (!state_->layout.holds(property) || row(property).letter != 'b') return {false, {}};
    if (!state_->editable(property)) return state_->refusal(property);
    return state_->storeBoolean(property, value);
}

EditCommit EditSession::setOption(std::int32_t property, std::int32_t option) {
    if (!state_->layout.holds(property) || row(property).letter != 'o') return {false, {}};
    if (!state_->editable(property)) return state_->refusal(property);
    if (option < 0 || static_cast<std::size_t>(option) >= row(property).options.size())
        return {false, formText(FormText::needsOption, locale())};
    return state_->store(property, option);
}

EditCommit EditSession::setColour(std::int32_t property, std::int32_t colour) {
    if (!state_->layout.holds(property) || row(property).letter != 'c') return {false, {}};
    if (!state_->editable(property)) return state_->refusal(property);
    return state_->store(property, colour);
}

EditCommit EditSession::resetRow(std::int32_t property) {
    if (!state_->layout.holds(property)) return {false, {}};
    if (!state_->editable(property)) return state_->refusal(property);
    state_->reset(property);
    return {};
}

bool EditSession::canUndo() const {
    return state_->firstToUndo() != EditState::kNoStep;
}

bool EditSession::canRedo() const {
    return !state_->undone.empty();
}

EditPlace EditSession::undo() {
    return state_->undo();
}

EditPlace EditSession::redo() {
    return state_->redo();
}

EditGroupBar EditSession::groupBar(int page) const {
    return state_->layout.holdsPage(page) ? state_->groupBar(page, true) : EditGroupBar();
}

void EditSession::setFilter(const std::string& words) {
    state_->setFilter(words);
}

std::int32_t EditSession::visibleRows(int number) const {
    const EditPage& shown = page(number);
    std::int32_t count = 0;
    for (std::int32_t at = shown.first; at <= shown.last; ++at)
        count += state_->visible[static_cast<std::size_t>(at)] ? 1 : 0;
    return count;
}

std::int32_t EditSession::nextEditable(std::int32_t property, bool forward) const {
    const EditPage& shown = page(pageOf(property));
    if (property < shown.first || property > shown.last) return -1;
    const std::int32_t step = forward ? 1 : -1;
    for (std::int32_t at = property + step; at >= shown.first && at <= shown.last; at += step)
        if (state_->visible[static_cast<std::size_t>(at)] && state_->editable(at)) return at;
    return -1;
}

EditChanges EditSession::takeChanges() {
    return state_->takeChanges();
}

bool EditSession::changed() const {
    return state_->changed();
}

}  // namespace korvant
