// The check at OK, and the summary.
#include <algorithm>
#include <charconv>

#include "object/form/edit_state.h"
#include "object/form/form_texts.h"
#include "object/form/report_text.h"

namespace korvant {

void FormWalk::run(const Visit& visit, bool keepComputed) {
    EditStep scratch;
    std::vector<GroupContent> computed;
    session_.values.setJournal(&scratch.values);
    session_.desk.setJournal(&scratch.groups);
    visitForm(visit);
    for (int group = 0; group < session_.desk.count(); ++group) {
        if (session_.desk.group(group).outer != GroupDesk::kNoGroup) continue;
        visitGroup(group, visit);
        computed.push_back(session_.desk.group(group).content);
    }
    session_.values.setJournal(nullptr);
    session_.desk.setJournal(nullptr);
    session_.revert(scratch);
    if (!keepComputed) return;
    auto next = computed.begin();
    for (int group = 0; group < session_.desk.count(); ++group)
        if (session_.desk.group(group).outer == GroupDesk::kNoGroup)
            session_.desk.setContent(group, *next++);
}

/// Rows that belong to no group.
void FormWalk::visitForm(const Visit& visit) {
    std::vector<std::int32_t> rows;
    for (std::int32_t row = 0; row < session_.layout.count(); ++row)
        if (session_.desk.groupOfRow(row) == GroupDesk::kNoGroup) rows.push_back(row);
    visit(rows, path_);
}

std::vector<std::int32_t> FormWalk::ownRows(int group) const {
    std::vector<std::int32_t> rows;
    for (const std::int32_t row : session_.desk.group(group).members)
        if (session_.desk.groupOfRow(row) == group) rows.push_back(row);
    return rows;
}

/// A group without elements is not looked at.
void FormWalk::visitGroup(int group, const Visit& visit) {
    GroupDesk& desk = session_.desk;
    const std::vector<std::int32_t> rows = ownRows(group);
    const std::int32_t current = desk.group(group).content.current;
    for (std::int32_t i = 0; i < desk.group(group).content.size(); ++i) {
        desk.choose(group, i);
        session_.rules.pass(i == current ? session_.lastEdited : RuleBook::kNoRow);
        path_.stops.push_back({group, i});
        visit(rows, path_);
        for (const int inner : desk.group(group).inner) visitGroup(inner, visit);
        path_.stops.pop_back();
    }
    desk.getGroupDlg(group);
    desk.setContent(group, {desk.group(group).content.list, current});
    if (desk.group(group).content.hasCurrent()) desk.setGroupDlg(group, current);
}

namespace {

/// One failing row, with the elements on the way to it.
struct Finding {
    std::int32_t row = 0;
    ElementPath path;
    std::vector<std::string> messages;
};

constexpr std::size_t kFindingsTold = 8;

/// "Label (2) : " and what is wrong; HTML.
std::string headOf(const EditState& session, const Finding& one) {
    std::string head = session.layout.rows[static_cast<std::size_t>(one.row)].label;
    for (const ElementPath::Stop& stop : one.path.stops)
        head += " (" + std::to_string(stop.element + 1) + ")";
    return head;
}

/// Which rows fail, and why.
std::string detailsOf(const EditState& session, const std::vector<Finding>& found) {
    std::string html;
    for (std::size_t i = 0; i < std::min(found.size(), kFindingsTold); ++i)
        for (const std::string& message : found[i].messages)
            html += "<b>" + headOf(session, found[i]) + " : </b>" + message + "<br>";
    if (found.size() > kFindingsTold) html += "...";
    return html;
}

std::vector<EditFinding> toldTo(const EditState& session, const std::vector<Finding>& found) {
    std::vector<EditFinding> told;
    for (const Finding& one : found) {
        EditFinding finding;
        finding.place = {session.layout.pageOfRow[static_cast<std::size_t>(one.row)], one.row};
        for (const ElementPath::Stop& stop : one.path.stops)
            finding.elements.push_back(stop.element);
        finding.messages = one.messages;
        told.push_back(std::move(finding));
    }
    return told;
}

std::vector<Finding> find(EditState& session, bool errors, bool keepComputed) {
    std::vector<Finding> found;
    const auto look = [&](const std::vector<std::int32_t>& rows, const ElementPath& path) {
        for (const std::int32_t row : rows) {
            const int failing =
                errors ? session.rules.failingErrors(row) : session.rules.failingWarnings(row);
            if (failing > 0) found.push_back({row, path, session.rules.failing(row, errors)});
        }
    };
    FormWalk(session).run(look, keepComputed);
    // In the order of the rows; of one group's rows, element by element.
    const auto before = [&](const Finding& a, const Finding& b) {
        return session.layout.pageOfRow[static_cast<std::size_t>(a.row)] <
               session.layout.pageOfRow[static_cast<std::size_t>(b.row)];
    };
    std::stable_sort(found.begin(), found.end(), before);
    return found;
}

/// Captions of the pages that fail; in a dialog, labels of the rows.
NumberedMessages captionsOf(const EditState& session, const std::vector<Finding>& found) {
    NumberedMessages captions;
    std::vector<bool> told(session.layout.rows.size() + session.layout.pages.size());
    for (const Finding& one : found) {
        const auto row = static_cast<std::size_t>(one.row);
        const auto page = static_cast<std::size_t>(session.layout.pageOfRow[row]);
        const bool sheet = session.layout.kind == FormKind::sheet;
        const std::size_t which = sheet ? page : session.layout.pages.size() + row;
        if (told[which]) continue;
        told[which] = true;
        captions.add(sheet ? session.layout.pages[page].caption : session.layout.rows[row].label);
    }
    return captions;
}

constexpr char kLink[] = "row:";

std::string linkTo(const Finding& one) {
    std::string link = kLink + std::to_string(one.row);
    for (const ElementPath::Stop& stop : one.path.stops)
        link += ":" + std::to_string(stop.group) + "." + std::to_string(stop.element);
    return link;
}

std::string linesOf(const EditState& session, const Finding& one) {
    const EditRow& row = session.layout.rows[static_cast<std::size_t>(one.row)];
    std::string html = "<b><a href=\"" + linkTo(one) + "\">" + row.label + "</a>";
    for (const ElementPath::Stop& stop : one.path.stops)
        html += " (" + std::to_string(stop.element + 1) + ")";
    html += " : </b><br>";
    NumberedMessages messages;
    for (const std::string& message : one.messages) messages.add(message);
    html += messages.text();
    return messages.count() > 1 ? html : html + "<br>";
}

void appendFindings(std::string& html, EditState& session, bool errors) {
    const std::vector<Finding> found = find(session, errors, false);
    if (found.empty()) return;
    const bool several = found.size() > 1 || found.front().messages.size() > 1;
    const std::int32_t locale = session.layout.locale;
    const std::string head =
        errors ? errorSummary(several, locale) : warningSummary(several, locale);
    html += "<h3>" + head + "</h3>";
    for (const Finding& one : found) {
        if (html.size() > kReportBytes) {
            html += "...<br>";
            return;
        }
        html += linesOf(session, one);
    }
}

/// Reads a number and the separator before it.
bool readPart(std::string_view& text, char separator, std::int32_t& number) {
    if (text.empty() || text.front() != separator) return false;
    const auto read = std::from_chars(text.data() + 1, text.data() + text.size(), number);
    if (read.ec != std::errc()) return false;
    text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
    return true;
}

}  // namespace

EditCheck EditSession::confirm() {
    EditState& state = *state_;
    state.rules.pass(state.lastEdited);
    state.noteChanges({});
    const std::vector<Finding> found = find(state, true, true);
    if (found.empty()) return {};
    const Finding& first = found.front();
    state.choosePath(first.path);
    EditCheck check;
    check.passed = false;
    check.report = formReport(captionsOf(state, found), state.layout.locale);
    check.details = detailsOf(state, found);
    check.findings = toldTo(state, found);
    check.place = {pageOf(first.row), first.row};
    return check;
}

std::string EditSession::summary() {
    std::string html;
    appendFindings(html, *state_, true);
    appendFindings(html, *state_, false);
    if (!html.empty()) return html;
    return htmlOfWestern(formText(FormText::noFindings, state_->layout.locale));
}

EditPlace EditSession::follow(const std::string& link) {
    std::string_view rest = link;
    std::int32_t row = -1;
    if (rest.substr(0, 4) != kLink) return {};
    rest.remove_prefix(3);
    if (!readPart(rest, ':', row) || !state_->layout.holds(row)) return {};
    ElementPath path;
    for (ElementPath::Stop stop; readPart(rest, ':', stop.group);) {
        const bool known = stop.group >= 0 && stop.group < state_->desk.count();
        if (!known || !readPart(rest, '.', stop.element)) return {};
        path.stops.push_back(stop);
    }
    if (!rest.empty()) return {};
    for (const ElementPath::Stop& stop : path.stops)
        if (!chooseElement(state_->desk.group(stop.group).page, stop.element)) return {};
    return {pageOf(row), row};
}

}  // namespace korvant
