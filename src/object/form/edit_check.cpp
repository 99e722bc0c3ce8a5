// The check at OK, and the summary.
#include <algorithm>
#include <charconv>

#include "object/form/edit_state.h"
#include "object/form/form_texts.h"
#include "object/form/form_walk.h"
#include "object/form/report_text.h"

namespace korvant {

namespace {

/// One failing row, with the elements on the way to it.
struct Finding {
    std::int32_t row = 0;
    ElementPath path;
    std::vector<std::string> messages;
};

constexpr std::size_t kFindingsTold = 8;

/// "Label (2) : " and what is wrong; HTML.
std::string headOf(const EditCore& core, const Finding& one) {
    std::string head = core.layout.rows[static_cast<std::size_t>(one.row)].label;
    for (const ElementPath::Stop& stop : one.path.stops)
        head += " (" + std::to_string(stop.element + 1) + ")";
    return head;
}

/// Which rows fail, and why.
std::string detailsOf(const EditCore& core, const std::vector<Finding>& found) {
    std::string html;
    for (std::size_t i = 0; i < std::min(found.size(), kFindingsTold); ++i)
        for (const std::string& message : found[i].messages)
            html += "<b>" + headOf(core, found[i]) + " : </b>" + message + "<br>";
    if (found.size() > kFindingsTold) html += "...";
    return html;
}

std::vector<EditFinding> toldTo(const EditCore& core, const std::vector<Finding>& found) {
    std::vector<EditFinding> told;
    for (const Finding& one : found) {
        EditFinding finding;
        finding.place = {core.layout.pageOfRow[static_cast<std::size_t>(one.row)], one.row};
        for (const ElementPath::Stop& stop : one.path.stops)
            finding.elements.push_back(stop.element);
        finding.messages = one.messages;
        told.push_back(std::move(finding));
    }
    return told;
}

std::vector<Finding> find(EditCore& core, bool errors, bool keepComputed) {
    std::vector<Finding> found;
    const auto look = [&](const std::vector<std::int32_t>& rows, const ElementPath& path) {
        for (const std::int32_t row : rows) {
            const int failing =
                errors ? core.rules.failingErrors(row) : core.rules.failingWarnings(row);
            if (failing > 0) found.push_back({row, path, core.rules.failing(row, errors)});
        }
    };
    FormWalk(core).run(look, keepComputed);
    // In the order of the rows; of one group's rows, element by element.
    const auto before = [&](const Finding& a, const Finding& b) {
        return core.layout.pageOfRow[static_cast<std::size_t>(a.row)] <
               core.layout.pageOfRow[static_cast<std::size_t>(b.row)];
    };
    std::stable_sort(found.begin(), found.end(), before);
    return found;
}

/// Captions of the pages that fail; in a dialog, labels of the rows.
NumberedMessages captionsOf(const EditCore& core, const std::vector<Finding>& found) {
    NumberedMessages captions;
    std::vector<bool> told(core.layout.rows.size() + core.layout.pages.size());
    for (const Finding& one : found) {
        const auto row = static_cast<std::size_t>(one.row);
        const auto page = static_cast<std::size_t>(core.layout.pageOfRow[row]);
        const bool sheet = core.layout.kind == FormKind::sheet;
        const std::size_t which = sheet ? page : core.layout.pages.size() + row;
        if (told[which]) continue;
        told[which] = true;
        captions.add(sheet ? core.layout.pages[page].caption : core.layout.rows[row].label);
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

std::string linesOf(const EditCore& core, const Finding& one) {
    const EditRow& row = core.layout.rows[static_cast<std::size_t>(one.row)];
    std::string html = "<b><a href=\"" + linkTo(one) + "\">" + row.label + "</a>";
    for (const ElementPath::Stop& stop : one.path.stops)
        html += " (" + std::to_string(stop.element + 1) + ")";
    html += " : </b><br>";
    NumberedMessages messages;
    for (const std::string& message : one.messages) messages.add(message);
    html += messages.text();
    return messages.count() > 1 ? html : html + "<br>";
}

void appendFindings(std::string& html, EditCore& core, bool errors) {
    const std::vector<Finding> found = find(core, errors, false);
    if (found.empty()) return;
    const bool several = found.size() > 1 || found.front().messages.size() > 1;
    const std::int32_t locale = core.layout.locale;
    const std::string head =
        errors ? errorSummary(several, locale) : warningSummary(several, locale);
    html += "<h3>" + head + "</h3>";
    for (const Finding& one : found) {
        if (html.size() > kReportBytes) {
            html += "...<br>";
            return;
        }
        html += linesOf(core, one);
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
    EditCore& core = state_->core;
    core.rules.pass(core.lastEdited);
    core.noteChanges({});
    const std::vector<Finding> found = find(core, true, true);
    if (found.empty()) return {};
    const Finding& first = found.front();
    state_->choosePath(first.path);
    EditCheck check;
    check.passed = false;
    check.report = formReport(captionsOf(core, found), core.layout.locale);
    check.details = detailsOf(core, found);
    check.findings = toldTo(core, found);
    check.place = {pageOf(first.row), first.row};
    return check;
}

std::string EditSession::summary() {
    std::string html;
    appendFindings(html, state_->core, true);
    appendFindings(html, state_->core, false);
    if (!html.empty()) return html;
    return htmlOfWestern(formText(FormText::noFindings, state_->core.layout.locale));
}

EditPlace EditSession::follow(const std::string& link) {
    std::string_view rest = link;
    std::int32_t row = -1;
    if (rest.substr(0, 4) != kLink) return {};
    rest.remove_prefix(3);
    if (!readPart(rest, ':', row) || !state_->core.layout.holds(row)) return {};
    ElementPath path;
    for (ElementPath::Stop stop; readPart(rest, ':', stop.group);) {
        const bool known = stop.group >= 0 && stop.group < state_->core.desk.count();
        if (!known || !readPart(rest, '.', stop.element)) return {};
        path.stops.push_back(stop);
    }
    if (!rest.empty()) return {};
    for (const ElementPath::Stop& stop : path.stops)
        if (!chooseElement(state_->core.desk.group(stop.group).page, stop.element)) return {};
    return {pageOf(row), row};
}

}  // namespace korvant
